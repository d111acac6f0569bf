#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "detail/WQIcuLocale.h"
#include "detail/WQIcuStrings.h"

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

#include <memory>

namespace wq {
namespace {

struct Snapshot {
    quint64 generation = 0;
    QString decimalSeparator, groupingSeparator;
    QString currencySymbol, currencyGrouping, currencyDecimal;
    QString positiveFormat, negativeFormat;
};

// Separators, amounts' included, come from the numeric locale: an amount's
// decimal separator is the plain numbers' one, and taking its grouping from
// the same locale keeps the two apart when Numbers and Currency are set to
// different locales (en_US numbers with German money would otherwise group
// with the "." that is also the decimal point).
void readNumeric(Snapshot& s)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(icu_locale::forNumbers(WQRegionalSettings::Category::Numeric), status);
    if (U_FAILURE(status))
        return;
    const auto symbol = [&symbols](icu::DecimalFormatSymbols::ENumberFormatSymbol which) {
        return icu_strings::fromIcu(symbols.getSymbol(which));
    };
    s.decimalSeparator = symbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    s.groupingSeparator = symbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol);
    s.currencyDecimal = symbol(icu::DecimalFormatSymbols::kMonetarySeparatorSymbol);
    s.currencyGrouping = symbol(icu::DecimalFormatSymbols::kMonetaryGroupingSeparatorSymbol);
    if (s.currencyGrouping == s.decimalSeparator)
        s.currencyGrouping = s.groupingSeparator;
}

// The currency's symbol and where it and the sign go come from the monetary locale.
void readMonetary(Snapshot& s)
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createCurrencyInstance(icu_locale::forNumbers(WQRegionalSettings::Category::Monetary), status));
    auto* decimal = dynamic_cast<icu::DecimalFormat*>(format.get());
    if (U_FAILURE(status) || !decimal)
        return;
    if (const icu::DecimalFormatSymbols* symbols = decimal->getDecimalFormatSymbols())
        s.currencySymbol = icu_strings::fromIcu(symbols->getSymbol(icu::DecimalFormatSymbols::kCurrencySymbol));
    icu::UnicodeString pattern;
    decimal->toPattern(pattern);
    WQNumberSettings::legacyCurrencyFormats(icu_strings::fromIcu(pattern), &s.positiveFormat, &s.negativeFormat);
}

const Snapshot& snapshot()
{
    static Snapshot s;
    const quint64 now = WQRegionalSettings::generation();
    if (s.generation != now) {
        s = Snapshot{};
        s.generation = now;
        readNumeric(s);
        readMonetary(s);
    }
    return s;
}

// One subpattern in the legacy form: quotes resolved, the currency sign as
// "$", no-break spaces as blanks and bidirectional marks dropped so that the
// symbol's blank rules apply (he_IL writes a mark between blank and symbol).
QString legacySubpattern(QStringView icu)
{
    QString out;
    out.reserve(icu.size());
    bool quoted = false;
    for (qsizetype i = 0; i < icu.size(); ++i) {
        const QChar c = icu[i];
        if (c == u'\'') {
            if (i + 1 < icu.size() && icu[i + 1] == u'\'') {
                out += c;
                ++i;
            } else {
                quoted = !quoted;
            }
            continue;
        }
        if (c == u'\u00A4' && !quoted) {
            // ¤¤ and ¤¤¤ (code, name) still stand for the one symbol.
            while (i + 1 < icu.size() && icu[i + 1] == u'\u00A4')
                ++i;
            out += u'$';
        } else if (c == u'\u00A0' || c == u'\u202F') {
            out += u' ';
        } else if (c.category() == QChar::Other_Format) {
            continue;
        } else {
            out += c;
        }
    }
    return out;
}

// The ";" that separates the subpatterns, outside quotes.
qsizetype subpatternSeparator(QStringView pattern)
{
    bool quoted = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'\'')
            quoted = !quoted;
        else if (pattern[i] == u';' && !quoted)
            return i;
    }
    return -1;
}

} // namespace

void WQNumberSettings::legacyCurrencyFormats(const QString& icuPattern, QString* positive, QString* negative)
{
    const qsizetype split = subpatternSeparator(icuPattern);
    const QString pos = legacySubpattern(QStringView(icuPattern).left(split >= 0 ? split : icuPattern.size()));
    if (positive)
        *positive = pos;
    if (negative)
        *negative = split >= 0 ? legacySubpattern(QStringView(icuPattern).mid(split + 1)) : QStringLiteral("-") + pos;
}

QString WQNumberSettings::decimalSeparator() { return snapshot().decimalSeparator; }
QString WQNumberSettings::groupingSeparator() { return snapshot().groupingSeparator; }
QString WQNumberSettings::currencySymbol() { return snapshot().currencySymbol; }
QString WQNumberSettings::currencyGroupingSeparator() { return snapshot().currencyGrouping; }
QString WQNumberSettings::currencyDecimalSeparator() { return snapshot().currencyDecimal; }
QString WQNumberSettings::positiveCurrencyFormat() { return snapshot().positiveFormat; }
QString WQNumberSettings::negativeCurrencyFormat() { return snapshot().negativeFormat; }

} // namespace wq
