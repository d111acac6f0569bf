#include <WQGeneral/dateformatter/WQDateFormatter.h>

#include "WQDateFormatter_p.h"
#include <WQGeneral/platform/WQLocalizedText.h>

#include <array>
#include <limits>

namespace wq {
namespace {

// Reads a number the way the C library's strtol does: leading white space,
// an optional sign, then ASCII digits; the rest is ignored, no digits read 0,
// overflow saturates.
qint64 readNumber(QStringView text) noexcept
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n) {
        const char16_t c = text[i].unicode();
        if (c != u' ' && c != u'\t' && c != u'\n' && c != u'\v' && c != u'\f' && c != u'\r')
            break;
        ++i;
    }
    bool negative = false;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    const quint64 cap = quint64(std::numeric_limits<qint64>::max()) + (negative ? 1 : 0);
    quint64 value = 0;
    bool overflow = false;
    for (; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c < u'0' || c > u'9')
            break;
        const unsigned digit = c - u'0';
        if (overflow || value > (cap - digit) / 10)
            overflow = true;
        else
            value = value * 10 + digit;
    }
    if (overflow)
        return negative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
    return negative ? qint64(0 - value) : qint64(value);
}

// Month and day keep their low 8 bits (a typed 257 is 1), the year its low
// 32 bits as a signed number: the widths the stored fields always had.
quint8 lowByte(qint64 v) noexcept { return quint8(quint64(v) & 0xFF); }
qint64 signed32(qint64 v) noexcept { return qint32(quint32(quint64(v) & 0xFFFFFFFFu)); }

} // namespace

std::optional<WQDate> WQDateFormatter::dateForString(const QString& string, QString* errorDescription) const
{
    auto fail = [errorDescription](const QString& message) -> std::optional<WQDate> {
        if (errorDescription)
            *errorDescription = message;
        return std::nullopt;
    };
    if (string.isEmpty())
        return fail(WQStrings::tr("You cannot leave the date field blank."));

    // Up to three numbers; a fourth part is enough to refuse.
    std::array<qint64, 3> parts{};
    qsizetype count = 0;
    const QStringView text(string);
    const char16_t separator = _wq_d->localizedSeparator.isEmpty() ? 0 : _wq_d->localizedSeparator[0].unicode();
    qsizetype from = 0;
    for (;;) {
        const qsizetype at = text.indexOf(QChar(separator), from);
        const QStringView part = text.mid(from, (at < 0 ? text.size() : at) - from);
        if (count == 3)
            return fail(WQStrings::tr("Too many numbers for a date."));
        parts[count++] = readNumber(part);
        if (at < 0)
            break;
        from = at + 1;
    }

    const unsigned monthAt = _wq_d->flags.monthPosition;
    const unsigned dayAt = _wq_d->flags.dayPosition;
    qint64 year = 0;
    quint8 month = 0;
    quint8 day = 0;

    if (count == 1) {
        const WQDate now = today().value_or(WQDate());
        year = now.yearOfCommonEra();
        month = quint8(now.monthOfYear());
        day = lowByte(parts[0]);
    } else if (count == 2) {
        year = today().value_or(WQDate()).yearOfCommonEra();
        if (monthAt >= dayAt) {
            day = lowByte(parts[0]);
            month = lowByte(parts[1]);
        } else {
            month = lowByte(parts[0]);
            day = lowByte(parts[1]);
        }
    } else {
        // A format with a fourth field can name a place past the three
        // numbers; such a place reads as 0.
        auto partAt = [&parts](unsigned index) { return index < parts.size() ? parts[index] : 0; };
        month = lowByte(partAt(monthAt));
        day = lowByte(partAt(dayAt));
        if (monthAt != 0 && dayAt != 0)
            year = signed32(parts[0]);
        else if (monthAt != 1 && dayAt != 1)
            year = signed32(parts[1]);
        else if (monthAt == 2 || dayAt == 2)
            year = 0;
        else
            year = signed32(parts[2]);
        // A fixed pivot: 95-99 are the 1990s, everything else below 100 is
        // in today's century.
        if (year < 100) {
            if (year >= 95)
                year += 1900;
            else
                year += today().value_or(WQDate()).yearOfCommonEra() / 100 * 100;
        }
    }

    if (month < 1 || month > 12)
        return fail(WQStrings::tr("Invalid month entry."));
    if (day < 1 || day > WQDate::daysInMonth(month, year))
        return fail(WQStrings::tr("Invalid day entry."));
    const WQDate date = WQDate::dateWithYear(year, month, day);
    if (const QString refusal = _wq_outOfRange(date); !refusal.isEmpty())
        return fail(refusal);
    return date;
}

void WQDateFormatter::setMinimumDate(std::optional<WQDate> minimum)
{
    _wq_d->minimumDate = minimum;
    if (minimum && _wq_d->maximumDate && *_wq_d->maximumDate < *minimum)
        _wq_d->maximumDate = minimum;
}

void WQDateFormatter::setMaximumDate(std::optional<WQDate> maximum)
{
    _wq_d->maximumDate = maximum;
    if (maximum && _wq_d->minimumDate && *maximum < *_wq_d->minimumDate)
        _wq_d->minimumDate = maximum;
}

void WQDateFormatter::setDateRange(std::optional<WQDate> minimum, std::optional<WQDate> maximum)
{
    _wq_d->minimumDate = minimum;
    _wq_d->maximumDate = minimum && maximum && *maximum < *minimum ? minimum : maximum;
}

QString WQDateFormatter::_wq_outOfRange(const WQDate& date) const
{
    // Years the storage layouts cannot hold would be written whole and read
    // back as another date.
    if (date.yearOfCommonEra() < kEarliestYear || date.yearOfCommonEra() > kLatestYear)
        return WQStrings::tr("Invalid year entry.");
    const bool early = _wq_d->minimumDate && date < *_wq_d->minimumDate;
    const bool late = _wq_d->maximumDate && date > *_wq_d->maximumDate;
    if (!early && !late)
        return QString();
    if (_wq_d->minimumDate && _wq_d->maximumDate)
        return WQFormatTemplate(WQStrings::tr("The date must be between %@ and %@."),
                                {_wq_render(*_wq_d->minimumDate), _wq_render(*_wq_d->maximumDate)});
    if (early)
        return WQFormatTemplate(WQStrings::tr("The date must be on or after %@."), {_wq_render(*_wq_d->minimumDate)});
    return WQFormatTemplate(WQStrings::tr("The date must be on or before %@."), {_wq_render(*_wq_d->maximumDate)});
}

bool WQDateFormatter::getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const
{
    const std::optional<WQDate> date = dateForString(string, errorDescription);
    if (!date)
        return false;
    if (value)
        *value = QVariant::fromValue(*date);
    return true;
}

} // namespace wq
