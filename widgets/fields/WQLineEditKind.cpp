// The formatter kinds a form can name for a WQLineEdit.
#include "WQLineEdit_p.h"

#include <WQGeneral/fields/WQFieldKind.h>

#include <algorithm>

namespace wq {

// The field's kinds are core's, named inside the class for Designer and
// Qt's meta-object system.
static_assert(int(WQLineEdit::NoFormatter) == int(WQFieldKind::NoFormatter)
              && int(WQLineEdit::Date) == int(WQFieldKind::Date)
              && int(WQLineEdit::ExtendedDate) == int(WQFieldKind::ExtendedDate)
              && int(WQLineEdit::WholeNumber) == int(WQFieldKind::WholeNumber)
              && int(WQLineEdit::Decimal) == int(WQFieldKind::Decimal)
              && int(WQLineEdit::Money) == int(WQFieldKind::Money)
              && int(WQLineEdit::CalculatingMoney) == int(WQFieldKind::CalculatingMoney)
              && int(WQLineEdit::Custom) == int(WQFieldKind::Custom));

std::shared_ptr<WQFormatter> WQMakeFormatter(WQLineEdit::FormatterKind kind, int places)
{
    return WQFormatterOfKind(static_cast<WQFieldKind>(kind), places, nullptr);
}

WQLineEdit::FormatterKind WQLineEdit::formatterKind() const
{
    Q_D(const WQLineEdit);
    const std::shared_ptr<WQFormatter>& formatter = d->session.formatter();
    if (!formatter)
        return NoFormatter;
    return d->kindFormatter.lock() == formatter ? d->kind : Custom;
}

void WQLineEdit::setFormatterKind(FormatterKind kind)
{
    Q_D(WQLineEdit);
    if (kind == Custom || kind == formatterKind())
        return;
    auto formatter = WQMakeFormatter(kind, d->places);
    d->kind = kind;
    d->kindFormatter = formatter;
    setFormatter(std::move(formatter));
}

int WQLineEdit::places() const noexcept
{
    Q_D(const WQLineEdit);
    return d->places;
}

void WQLineEdit::setPlaces(int places)
{
    Q_D(WQLineEdit);
    places = std::clamp(places, 0, 9);
    if (places == d->places)
        return;
    d->places = places;
    const FormatterKind kind = formatterKind();
    if (kind == Money || kind == CalculatingMoney) {
        auto formatter = WQMakeFormatter(kind, d->places);
        d->kindFormatter = formatter;
        setFormatter(std::move(formatter));
    }
    emit placesChanged(places);
}

} // namespace wq
