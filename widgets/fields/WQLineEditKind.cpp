// The formatter kinds a form can name for a WQLineEdit.
#include <WQGeneral/fields/WQLineEdit.h>

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
