#include <WQGeneral/money/WQMoneyFormatter.h>

#include "WQMoneyFormatter_p.h"
#include "detail/WQTextEditing.h"

#include "WQMoneyPlaces.h"

#include <algorithm>

namespace wq {
namespace {

// An amount split the way display rounds it.
struct Rounded {
    qint64 whole;            // after the carry
    qint64 wholeBeforeCarry; // decides whether a tiny negative keeps its sign
    quint64 units;           // of the smallest unit, below the multiplier
};

Rounded roundAmount(double d, quint64 multiplier)
{
    Rounded r;
    r.whole = _wq_truncToInt64(d);
    r.wholeBeforeCarry = r.whole;
    double fraction = std::fabs(d - double(r.whole));
    // Only amounts beyond 64 bits (and NaN) leave a "fraction" of 1 or more.
    if (!(fraction < 1.0))
        fraction = 0.0;
    // Unsigned: at 18 places ten times the units passes the signed range.
    const quint64 units = _wq_truncToUInt64(fraction * double(multiplier));
    const quint64 tenths = _wq_truncToUInt64(fraction * double(multiplier * 10));
    r.units = units;
    // The first dropped digit alone decides; an exact half goes to even.
    const qint64 dropped = qint64(tenths - 10 * units);
    if (dropped > 5 || (dropped == 5 && (r.units & 1)))
        ++r.units;
    if (r.units == multiplier) {
        if (r.whole < 0)
            r.whole = r.whole == std::numeric_limits<qint64>::min() ? r.whole : r.whole - 1;
        else
            r.whole = r.whole == std::numeric_limits<qint64>::max() ? r.whole : r.whole + 1;
        r.units = 0;
    }
    return r;
}

// Digits of |whole|, most significant first; answers how many.
int wholeDigits(qint64 whole, char16_t (&out)[20])
{
    char16_t reversed[20];
    int length = 0;
    quint64 magnitude = whole < 0 ? 0 - quint64(whole) : quint64(whole);
    do {
        reversed[length++] = char16_t(u'0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude);
    for (int i = 0; i < length; ++i)
        out[i] = reversed[length - 1 - i];
    return length;
}

void fractionDigits(quint64 units, quint8 places, char16_t* out)
{
    for (int i = places - 1; i >= 0; --i) {
        out[i] = char16_t(u'0' + units % 10);
        units /= 10;
    }
}

bool hasDigit(QStringView text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
}

} // namespace

quint64 _local_decimal_place_multiplier(QStringView pattern, bool hasPattern, quint8* count)
{
    quint8 places = 0;
    if (hasPattern) {
        // The search range after the point shrinks by one from the front per
        // zero found, so the count is the distance from the point to the
        // last zero.
        const qsizetype point = pattern.indexOf(u'.');
        const qsizetype lastZero = pattern.lastIndexOf(u'0');
        if (point >= 0 && lastZero > point)
            places = quint8(std::min<qsizetype>(lastZero - point, kWQMaximumMoneyPlaces));
    }
    if (count)
        *count = places;
    quint64 multiplier = 1;
    for (quint8 i = 0; i < places; ++i)
        multiplier *= 10;
    return multiplier;
}

QString WQMoneyFormatter::_wq_formatForMoney(bool negative, QString* localizedFormat) const
{
    const QString& localized = negative ? _wq_d->localizedNegativeFormat : _wq_d->localizedPositiveFormat;
    if (localizedFormat)
        *localizedFormat = localized;
    const QString base = negative ? negativeFormat() : positiveFormat();
    return base.isNull() || base.size() == 1 ? localized : base;
}

void WQMoneyFormatter::_wq_rebuildDisplayPlan()
{
    _wq_DisplayPlan plan;
    for (int sign = 0; sign < 2; ++sign) {
        QString localized;
        const QString pattern = _wq_formatForMoney(sign == 1, &localized);
        plan.multiplier[sign] = _local_decimal_place_multiplier(pattern, !pattern.isNull(), &plan.places[sign]);
        plan.grouping[sign] = localized.contains(u',');
        plan.symbol[sign] = pattern.contains(u'$');
    }
    plan.symbolAtEnd = _wq_d->localizedPositiveFormat.endsWith(u'$');
    if (_wq_d->localizedNegativeFormat.contains(u'-'))
        plan.negativeSign = '-';
    else if (_wq_d->localizedNegativeFormat.contains(u'(') && _wq_d->localizedNegativeFormat.contains(u')'))
        plan.negativeSign = '(';
    const bool placesUsed = plan.places[0] > 0 || plan.places[1] > 0;
    plan.direct = _wq_d->localizedThousandsSeparator.size() <= 1
        && (!placesUsed || (!_wq_d->localizedDecimalSeparator.isEmpty() && !hasDigit(_wq_d->localizedDecimalSeparator)));
    _wq_d->plan = plan;
}

std::optional<QString> WQMoneyFormatter::stringForObjectValue(const QVariant& value) const
{
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    if (const std::optional<double> number = _wq_numberValue(value))
        return stringForAmount(*number);
    return std::nullopt;
}

QString WQMoneyFormatter::stringForAmount(double amount) const
{
    if (!_wq_d->plan.direct)
        return _wq_generalStringForAmount(amount);

    // One pass into a buffer of the final size: sign, symbol, grouped
    // digits, separator and units, symbol, closing parenthesis.
    const int s = amount < 0 ? 1 : 0;
    const quint8 places = _wq_d->plan.places[s];
    const Rounded r = roundAmount(amount, _wq_d->plan.multiplier[s]);
    char16_t digits[20];
    const int count = wholeDigits(r.whole, digits);
    const bool signed_ = s == 1 && !(r.wholeBeforeCarry == 0 && r.units == 0) && _wq_d->plan.negativeSign != 0;
    const bool parens = signed_ && _wq_d->plan.negativeSign == '(';
    const QString& thousands = _wq_d->localizedThousandsSeparator;
    const QString& decimal = _wq_d->localizedDecimalSeparator;
    const QString& symbol = _wq_d->localizedCurrencySymbol;
    const qsizetype groups = _wq_d->plan.grouping[s] && !thousands.isEmpty() && count > 3 ? (count - 1) / 3 : 0;
    const qsizetype symbolLength = _wq_d->plan.symbol[s] ? symbol.size() : 0;
    const qsizetype length = (signed_ ? 1 : 0) + (parens ? 1 : 0) + symbolLength + count + groups
        + (places ? decimal.size() + places : 0);

    QString text(length, Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    if (signed_)
        *out++ = parens ? u'(' : u'-';
    const auto putSymbol = [&] {
        std::copy_n(reinterpret_cast<const char16_t*>(symbol.constData()), symbolLength, out);
        out += symbolLength;
    };
    if (symbolLength && !_wq_d->plan.symbolAtEnd)
        putSymbol();
    for (int i = 0; i < count; ++i) {
        if (groups && i > 0 && (count - i) % 3 == 0)
            *out++ = thousands.front().unicode();
        *out++ = digits[i];
    }
    if (places) {
        std::copy_n(reinterpret_cast<const char16_t*>(decimal.constData()), decimal.size(), out);
        out += decimal.size();
        fractionDigits(r.units, places, out);
        out += places;
    }
    if (symbolLength && _wq_d->plan.symbolAtEnd)
        putSymbol();
    if (parens)
        *out++ = u')';
    return text;
}

// The same display for settings the direct layout cannot take (longer or
// digit-like separators), following the text-editing steps literally.
QString WQMoneyFormatter::_wq_generalStringForAmount(double amount) const
{
    const int s = amount < 0 ? 1 : 0;
    const quint8 places = _wq_d->plan.places[s];
    const Rounded r = roundAmount(amount, _wq_d->plan.multiplier[s]);
    char16_t digits[20];
    QString text = QString::fromUtf16(digits, wholeDigits(r.whole, digits));
    if (places >= 1) {
        text += _wq_d->localizedDecimalSeparator;
        char16_t units[kWQMaximumMoneyPlaces];
        fractionDigits(r.units, places, units);
        text += QStringView(units, places);
    }
    if (_wq_d->plan.grouping[s])
        _wq_insertGrouping(text, _wq_d->localizedThousandsSeparator, _wq_d->localizedDecimalSeparator, [](qsizetype) {});
    if (_wq_d->plan.symbol[s]) {
        if (_wq_d->plan.symbolAtEnd)
            text += _wq_d->localizedCurrencySymbol;
        else
            text.prepend(_wq_d->localizedCurrencySymbol);
    }
    if (s == 0 || (r.wholeBeforeCarry == 0 && r.units == 0))
        return text;
    if (_wq_d->plan.negativeSign == '-')
        return text.prepend(u'-');
    if (_wq_d->plan.negativeSign == '(')
        return text.prepend(u'(').append(u')');
    return text;
}

} // namespace wq
