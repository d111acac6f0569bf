// The formatter kinds a form can name for a WQLineEdit.
#include <WQGeneral/fields/WQLineEdit.h>

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
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

std::shared_ptr<WQFormatter> WQMakeFormatter(WQLineEdit::FormatterKind kind, int places)
{
    switch (kind) {
    case WQLineEdit::Date:
        return std::make_shared<WQDateFormatter>(WQDateFormatter::shortDateFormat());
    case WQLineEdit::ExtendedDate:
        return std::make_shared<WQDateFormatter>(extendedDateFormat());
    case WQLineEdit::WholeNumber:
        return std::make_shared<WQPositiveIntegerFormatter>();
    case WQLineEdit::Decimal:
        return std::make_shared<WQDecimalFormatter>();
    case WQLineEdit::Money:
    case WQLineEdit::CalculatingMoney:
        return WQMoneyFormatter::moneyFormatterForDelegate(nullptr, static_cast<qint8>(std::clamp(places, 0, 9)),
                                                           kind == WQLineEdit::CalculatingMoney);
    case WQLineEdit::NoFormatter:
    case WQLineEdit::Custom:
        break;
    }
    return nullptr;
}

WQLineEdit::FormatterKind WQLineEdit::formatterKind() const
{
    if (!_wq_formatter)
        return NoFormatter;
    return _wq_kindFormatter.lock() == _wq_formatter ? _wq_kind : Custom;
}

void WQLineEdit::setFormatterKind(FormatterKind kind)
{
    if (kind == Custom || kind == formatterKind())
        return;
    auto formatter = WQMakeFormatter(kind, _wq_places);
    _wq_kind = kind;
    _wq_kindFormatter = formatter;
    setFormatter(std::move(formatter));
}

void WQLineEdit::setPlaces(int places)
{
    places = std::clamp(places, 0, 9);
    if (places == _wq_places)
        return;
    _wq_places = places;
    const FormatterKind kind = formatterKind();
    if (kind == Money || kind == CalculatingMoney) {
        auto formatter = WQMakeFormatter(kind, _wq_places);
        _wq_kindFormatter = formatter;
        setFormatter(std::move(formatter));
    }
}

} // namespace wq
