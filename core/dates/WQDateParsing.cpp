// Reading a date back from text by the same percent directives it is
// rendered with. A text that does not match answers 0000-00-00, the value
// callers already treat as "no date".

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include "WQDateFormatError.h"

#include <QStringList>

namespace wq {

namespace {

struct Fields {
    std::optional<qint64> year;
    std::optional<int> month;
    std::optional<int> day;
    std::optional<int> dayOfYear;
};

class Reader {
public:
    Reader(const QString& text, const std::optional<QVariantMap>& locale) : _wq_text(text), _wq_locale(locale) {}

    bool atEnd() const { return _wq_pos >= _wq_text.size(); }

    void skipSpaces()
    {
        while (!atEnd() && _wq_text.at(_wq_pos).isSpace())
            ++_wq_pos;
    }

    bool literal(QChar c)
    {
        if (atEnd() || _wq_text.at(_wq_pos) != c)
            return false;
        ++_wq_pos;
        return true;
    }

    // 1 ... maxDigits ASCII digits.
    std::optional<qint64> digits(int maxDigits)
    {
        qint64 value = 0;
        int count = 0;
        while (count < maxDigits && !atEnd()) {
            const char16_t c = _wq_text.at(_wq_pos).unicode();
            if (c < u'0' || c > u'9')
                break;
            value = value * 10 + (c - u'0');
            ++_wq_pos;
            ++count;
        }
        if (count == 0)
            return std::nullopt;
        return value;
    }

    std::optional<qint64> inRange(int maxDigits, qint64 low, qint64 high)
    {
        const auto value = digits(maxDigits);
        if (!value || *value < low || *value > high)
            return std::nullopt;
        return value;
    }

    // An optionally signed year of up to 18 digits, so it cannot overflow.
    std::optional<qint64> year(int maxDigits)
    {
        bool negative = false;
        if (!atEnd() && (_wq_text.at(_wq_pos) == u'-' || _wq_text.at(_wq_pos) == u'+')) {
            negative = _wq_text.at(_wq_pos) == u'-';
            ++_wq_pos;
        }
        const auto value = digits(maxDigits);
        if (!value)
            return std::nullopt;
        return negative ? -*value : *value;
    }

    // Index of the longest name (case-insensitive) of the listed entries
    // that the text continues with.
    std::optional<int> name(std::initializer_list<const QString*> keys)
    {
        if (!_wq_locale)
            return std::nullopt;
        int best = -1;
        qsizetype bestLength = 0;
        for (const QString* key : keys) {
            const QStringList names = _wq_locale->value(*key).toStringList();
            for (int i = 0; i < names.size(); ++i) {
                const QString& candidate = names.at(i);
                if (candidate.size() > bestLength
                    && QStringView(_wq_text).mid(_wq_pos).startsWith(candidate, Qt::CaseInsensitive)) {
                    best = i;
                    bestLength = candidate.size();
                }
            }
        }
        if (best < 0)
            return std::nullopt;
        _wq_pos += bestLength;
        return best;
    }

private:
    const QString& _wq_text;
    const std::optional<QVariantMap>& _wq_locale;
    qsizetype _wq_pos = 0;
};

// Two-digit years: 69-99 are 1969-1999, 00-68 are 2000-2068, as strptime reads them.
qint64 centuryFor(qint64 twoDigits)
{
    return twoDigits >= 69 ? 1900 + twoDigits : 2000 + twoDigits;
}

// A bad format raises whatever the text, so callers see it on the first try.
void checkFormat(const QString& format)
{
    const qsizetype size = format.size();
    for (qsizetype i = format.indexOf(u'%'); i >= 0; i = format.indexOf(u'%', i + 1)) {
        if (i + 1 >= size)
            throw NSRangeException(QStringLiteral("WQDate format ends with a lone '%': '%1'").arg(format));
        const QChar directive = format.at(++i);
        if (directive == u'1') {   // only as "%1m"
            if (i + 1 >= size || format.at(i + 1) != u'm')
                _wq_dates::raiseUnknownDirective(format);
            ++i;
        }
        if (!QStringView(u"deMmyYaAbBwj%1").contains(directive))
            _wq_dates::raiseUnknownDirective(format);
    }
}

// Answers nullopt when the text does not match.
std::optional<Fields> readFields(const QString& text, const QString& format, const std::optional<QVariantMap>& locale)
{
    checkFormat(format);
    Reader reader(text, locale);
    Fields fields;
    const qsizetype size = format.size();
    for (qsizetype i = 0; i < size; ++i) {
        const QChar f = format.at(i);
        if (f != u'%') {
            if (f.isSpace())
                reader.skipSpaces();
            else if (!reader.literal(f))
                return std::nullopt;
            continue;
        }
        std::optional<qint64> value;
        switch (format.at(++i).unicode()) {
        case u'e':
            reader.skipSpaces();
            [[fallthrough]];
        case u'd':
            value = reader.inRange(2, 1, 31);
            if (!value)
                return std::nullopt;
            fields.day = int(*value);
            break;
        case u'1':
            ++i;   // the 'm' of "%1m"
            [[fallthrough]];
        case u'm':
        case u'M':
            value = reader.inRange(2, 1, 12);
            if (!value)
                return std::nullopt;
            fields.month = int(*value);
            break;
        case u'y':
            value = reader.inRange(2, 0, 99);
            if (!value)
                return std::nullopt;
            fields.year = centuryFor(*value);
            break;
        case u'Y':
            // Directly followed by another directive ("%Y%m%d"), a year has four digits.
            value = reader.year(i + 1 < size && format.at(i + 1) == u'%' ? 4 : 18);
            if (!value)
                return std::nullopt;
            fields.year = value;
            break;
        case u'a':
            if (!reader.name({&WQDateLocaleKey_ShortWeekDayNameArray, &WQDateLocaleKey_WeekDayNameArray}))
                return std::nullopt;
            break;
        case u'A':
            if (!reader.name({&WQDateLocaleKey_WeekDayNameArray, &WQDateLocaleKey_ShortWeekDayNameArray}))
                return std::nullopt;
            break;
        case u'b':
        case u'B':
            if (const auto index = reader.name({&WQDateLocaleKey_MonthNameArray, &WQDateLocaleKey_ShortMonthNameArray}))
                fields.month = *index + 1;
            else
                return std::nullopt;
            break;
        case u'w':
            if (!reader.inRange(1, 0, 6))
                return std::nullopt;
            break;
        case u'j':
            value = reader.inRange(3, 1, 366);
            if (!value)
                return std::nullopt;
            fields.dayOfYear = int(*value);
            break;
        default:   // '%', the format check has refused everything else
            if (!reader.literal(u'%'))
                return std::nullopt;
            break;
        }
    }
    reader.skipSpaces();
    if (!reader.atEnd())
        return std::nullopt;
    return fields;
}

} // namespace

WQDate WQDate::dateWithString(const QString& text, const QString& format, const std::optional<QVariantMap>& locale)
{
    const std::optional<Fields> fields = readFields(text, format, locale);
    if (!fields)
        return WQDate();
    qint64 year = 0;
    if (fields->year) {
        year = *fields->year;
    } else {
        const auto today = WQDate::date();
        year = today ? today->yearOfCommonEra() : 0;
    }
    if (fields->dayOfYear && !fields->month && !fields->day)
        return WQDate(year, 1, quint64(*fields->dayOfYear));
    return WQDate(year, quint64(fields->month.value_or(1)), quint64(fields->day.value_or(1)));
}

WQDate WQDate::dateWithString(const QString& text, const QString& format)
{
    return dateWithString(text, format, WQSystemDateSettings::systemDefinedDateInformation());
}

} // namespace wq
