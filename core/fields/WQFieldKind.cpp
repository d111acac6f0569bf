#include <WQGeneral/fields/WQFieldKind.h>

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include <QRegularExpression>

#include <algorithm>

namespace wq {
namespace {

// The short date pattern with every run of year letters made four long, so
// the century is typed and shown.
QString extendedDateFormat()
{
    static const QRegularExpression yearRun(QStringLiteral("y+"));
    return WQDateFormatter::shortDateFormat().replace(yearRun, QStringLiteral("yyyy"));
}

} // namespace

std::shared_ptr<WQFormatter> WQFormatterOfKind(WQFieldKind kind, int places, WQMoneyFormatterOwner* owner)
{
    const auto moneyPlaces = static_cast<qint8>(std::clamp(places, 0, 9));
    switch (kind) {
    case WQFieldKind::Date:
        return std::make_shared<WQDateFormatter>(WQDateFormatter::shortDateFormat());
    case WQFieldKind::ExtendedDate:
        return std::make_shared<WQDateFormatter>(extendedDateFormat());
    case WQFieldKind::WholeNumber:
        return std::make_shared<WQPositiveIntegerFormatter>();
    case WQFieldKind::Decimal:
        return std::make_shared<WQDecimalFormatter>();
    case WQFieldKind::Money:
    case WQFieldKind::CalculatingMoney: {
        const bool calculating = kind == WQFieldKind::CalculatingMoney;
        if (owner)
            return owner->moneyFormatter(moneyPlaces, calculating);
        return WQMoneyFormatter::moneyFormatterForDelegate(nullptr, moneyPlaces, calculating);
    }
    case WQFieldKind::NoFormatter:
    case WQFieldKind::Custom:
        break;
    }
    return nullptr;
}

} // namespace wq
