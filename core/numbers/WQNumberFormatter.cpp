#include <WQGeneral/numbers/WQNumberFormatter.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "detail/WQIcuLocale.h"
#include "detail/WQIcuStrings.h"
#include "detail/WQTextEditing.h"

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/fmtable.h>
#include <unicode/parsepos.h>

namespace wq {

std::optional<double> _wq_numberValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return value.toDouble();
    default:
        return std::nullopt;
    }
}

// The ICU formatter is made on first use and again after a locale change or
// a change of pattern or separator.
struct WQNumberFormatter::_wq_Icu {
    quint64 generation = 0;
    std::unique_ptr<icu::DecimalFormat> format;
};

struct WQNumberFormatter::_wq_Private {
    QString positiveFormat;
    QString negativeFormat;
    QString decimalSeparator; ///< null: the locale's
    std::unique_ptr<_wq_Icu> icuState;
};

WQNumberFormatter::WQNumberFormatter() : _wq_d(std::make_unique<_wq_Private>()) {}
WQNumberFormatter::~WQNumberFormatter() = default;

QString WQNumberFormatter::positiveFormat() const { return _wq_d->positiveFormat; }
QString WQNumberFormatter::negativeFormat() const { return _wq_d->negativeFormat; }

void WQNumberFormatter::_wq_invalidate()
{
    _wq_d->icuState.reset();
}

void WQNumberFormatter::setFormat(const QString& pattern)
{
    _wq_d->positiveFormat = pattern;
    _wq_d->negativeFormat = QStringLiteral("-") + pattern;
    _wq_invalidate();
    _wq_patternsChanged();
}

void WQNumberFormatter::setPositiveFormat(const QString& format)
{
    _wq_d->positiveFormat = format;
    _wq_invalidate();
    _wq_patternsChanged();
}

void WQNumberFormatter::setNegativeFormat(const QString& format)
{
    _wq_d->negativeFormat = format;
    _wq_invalidate();
    _wq_patternsChanged();
}

QString WQNumberFormatter::decimalSeparator() const
{
    if (!_wq_d->decimalSeparator.isNull())
        return _wq_d->decimalSeparator;
    const QString system = WQNumberSettings::decimalSeparator();
    return system.isEmpty() ? QStringLiteral(".") : system;
}

void WQNumberFormatter::setDecimalSeparator(const QString& separator)
{
    _wq_d->decimalSeparator = separator.isEmpty() ? QStringLiteral(".") : separator;
    _wq_invalidate();
}

QString WQNumberFormatter::groupingSeparator() const
{
    return WQNumberSettings::groupingSeparator();
}

WQNumberFormatter::_wq_Icu& WQNumberFormatter::_wq_icu() const
{
    const quint64 generation = WQRegionalSettings::generation();
    if (_wq_d->icuState && _wq_d->icuState->generation == generation)
        return *_wq_d->icuState;
    auto state = std::make_unique<_wq_Icu>();
    state->generation = generation;
    UErrorCode status = U_ZERO_ERROR;
    auto symbols = std::make_unique<icu::DecimalFormatSymbols>(
        icu_locale::forNumbers(WQRegionalSettings::Category::Numeric), status);
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        symbols = std::make_unique<icu::DecimalFormatSymbols>(icu::Locale::getRoot(), status);
    }
    symbols->setSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol, icu_strings::toIcu(decimalSeparator()));
    QString pattern = _wq_d->positiveFormat.isEmpty() ? QStringLiteral("#,##0.###") : _wq_d->positiveFormat;
    if (!_wq_d->negativeFormat.isEmpty() && _wq_d->negativeFormat != QStringLiteral("-") + pattern)
        pattern += u';' + _wq_d->negativeFormat;
    status = U_ZERO_ERROR;
    state->format = std::make_unique<icu::DecimalFormat>(icu_strings::toIcu(pattern), symbols.release(), status);
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        state->format = std::make_unique<icu::DecimalFormat>(status);
    }
    _wq_d->icuState = std::move(state);
    return *_wq_d->icuState;
}

std::optional<QString> WQNumberFormatter::stringForObjectValue(const QVariant& value) const
{
    const std::optional<double> number = _wq_numberValue(value);
    if (!number)
        return std::nullopt;
    icu::UnicodeString text;
    _wq_icu().format->format(*number, text);
    return icu_strings::fromIcu(text);
}

bool WQNumberFormatter::getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const
{
    if (string.isEmpty()) {
        if (value)
            *value = QVariant();
        if (errorDescription)
            *errorDescription = QString();
        return true;
    }
    const icu::UnicodeString text = icu_strings::toIcu(string);
    icu::Formattable result;
    icu::ParsePosition position(0);
    _wq_icu().format->parse(text, result, position);
    UErrorCode status = U_ZERO_ERROR;
    const double parsed = result.getDouble(status);
    if (position.getErrorIndex() >= 0 || position.getIndex() != text.length() || U_FAILURE(status)) {
        if (errorDescription)
            *errorDescription = WQStrings::tr("Invalid number");
        return false;
    }
    if (value)
        *value = parsed;
    if (errorDescription)
        *errorDescription = QString();
    return true;
}

} // namespace wq
