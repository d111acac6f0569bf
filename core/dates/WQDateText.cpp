// Rendering of dates through percent directives ("%Y-%m-%d") or date-pattern
// letters ("M/d/yy"), with a process-wide cache: a table of dated rows asks
// for the same few hundred texts over and over while it scrolls.

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include "WQDateNumbers.h"

#include <QHash>
#include <QList>

#include <array>
#include <limits>

namespace wq {

using _wq_numbers::appendPadded;
using _wq_numbers::appendUnsigned;

namespace {

// Never evicts: the number of distinct (date, format, names) triples an
// application renders stays modest, and every hit saves a full render.
struct TextCache {
    QHash<QString, QString> texts;
    // Distinct locale dictionaries seen so far; a dictionary's index is part
    // of the key, so new names never meet texts rendered with old ones.
    QList<QVariantMap> locales;
    // The dictionary found last, to skip the value comparisons while the
    // same shared map is passed again and again.
    QVariantMap lastLocale;
    qint64 lastIndex = -1;

    TextCache()
    {
        texts.reserve(200);
        locales.reserve(2);
    }
};

TextCache& textCache()
{
    static TextCache cache;   // initialised once, thread-safely
    return cache;
}

qint64 localeIndex(const std::optional<QVariantMap>& locale)
{
    if (!locale)
        return std::numeric_limits<qint64>::max();
    TextCache& cache = textCache();
    if (cache.lastIndex >= 0 && locale->isSharedWith(cache.lastLocale))
        return cache.lastIndex;
    qint64 index = cache.locales.indexOf(*locale);
    if (index < 0) {
        index = cache.locales.size();
        cache.locales.append(*locale);
    }
    cache.lastLocale = *locale;
    cache.lastIndex = index;
    return index;
}

// The name at `index` of a locale entry, or nothing when the locale, the
// entry or the name is missing.
std::optional<QString> nameAt(const std::optional<QVariantMap>& locale, const QString& key, qint64 index)
{
    if (!locale || index < 0)
        return std::nullopt;
    const auto it = locale->constFind(key);
    if (it == locale->constEnd())
        return std::nullopt;
    const QStringList names = it->toStringList();
    if (index >= names.size())
        return std::nullopt;
    return names.at(index);
}

[[noreturn]] void raiseUnknownDirective(const QString& format)
{
    throw NSInvalidArgumentException(QStringLiteral("WQDate doesn't understand format: '%1'").arg(format));
}

class Renderer {
public:
    Renderer(const WQDate& date, const std::optional<QVariantMap>& locale) : _wq_date(date), _wq_locale(locale) {}

    std::optional<QString> monthName(const QString& key) const
    {
        if (_wq_date.monthOfYear() == 0)
            return std::nullopt;
        return nameAt(_wq_locale, key, qint64(_wq_date.monthOfYear()) - 1);
    }

    std::optional<QString> weekdayName(const QString& key) const
    {
        return nameAt(_wq_locale, key, _wq_date.dayOfWeek());
    }

    // Each directive is replaced where it stands; inserted text is never
    // scanned again, so copying the literal runs and appending the
    // replacements gives the same text.
    QString directives(const QString& format) const
    {
        QString out;
        out.reserve(format.size() + 16);
        const qsizetype size = format.size();
        qsizetype literalStart = 0;
        qsizetype percent = format.indexOf(u'%');
        while (percent >= 0) {
            out.append(QStringView(format).mid(literalStart, percent - literalStart));
            if (percent + 1 >= size)
                throw NSRangeException(QStringLiteral("WQDate format ends with a lone '%': '%1'").arg(format));
            qsizetype consumed = 2;
            switch (format.at(percent + 1).unicode()) {
            case u'd': appendPadded(out, qint64(_wq_date.dayOfMonth()), 2); break;
            case u'e': appendPadded(out, qint64(_wq_date.dayOfMonth())); break;
            case u'm':
            case u'M': appendPadded(out, qint64(_wq_date.monthOfYear()), 2); break;
            case u'1':
                if (percent + 2 >= size || format.at(percent + 2) != u'm')
                    raiseUnknownDirective(format);
                appendPadded(out, qint64(_wq_date.monthOfYear()));
                consumed = 3;
                break;
            case u'y': appendPadded(out, _wq_date.yearOfCommonEra() % 100, 2); break;
            case u'Y': appendPadded(out, _wq_date.yearOfCommonEra(), 4); break;
            case u'a': appendName(out, weekdayName(WQDateLocaleKey_ShortWeekDayNameArray)); break;
            case u'A': appendName(out, weekdayName(WQDateLocaleKey_WeekDayNameArray)); break;
            case u'b': appendName(out, monthName(WQDateLocaleKey_ShortMonthNameArray)); break;
            case u'B': appendName(out, monthName(WQDateLocaleKey_MonthNameArray)); break;
            case u'w': appendPadded(out, _wq_date.dayOfWeek()); break;
            case u'j': appendPadded(out, _wq_date.dayOfYear(), 3); break;
            case u'%':
                // The first '%' goes, the second stays and is not a directive.
                out.append(u'%');
                break;
            default: raiseUnknownDirective(format);
            }
            literalStart = percent + consumed;
            percent = format.indexOf(u'%', literalStart);
        }
        out.append(QStringView(format).mid(literalStart));
        return out;
    }

    // Each pattern is replaced once, at its first occurrence in the text as
    // it stands after the earlier replacements. So an inserted month name
    // with a capital M loses it to a later "M" ("MMMM d" gives "3arch 5"):
    // applications have stored such texts and expect them back.
    QString patterns(const QString& format) const
    {
        QString text = format;
        QString number;
        auto replaceFirst = [&text](QStringView token, const QString& with) {
            const qsizetype at = text.indexOf(token);
            if (at >= 0)
                text.replace(at, token.size(), with);
        };
        auto numberWith = [&number](qint64 value, int width) -> const QString& {
            number.clear();
            appendPadded(number, value, width);
            return number;
        };
        const qint64 year = _wq_date.yearOfCommonEra();
        const qint64 month = qint64(_wq_date.monthOfYear());
        const qint64 day = qint64(_wq_date.dayOfMonth());
        replaceFirst(u"yyyy", numberWith(year, 4));
        replaceFirst(u"yyy", numberWith(year, 3));
        replaceFirst(u"yy", numberWith(year % 100, 2));
        replaceFirst(u"y", numberWith(year, 0));
        replaceFirst(u"dd", numberWith(day, 2));
        replaceFirst(u"d", numberWith(day, 0));
        replaceFirst(u"MMMM", monthName(WQDateLocaleKey_MonthNameArray).value_or(QString()));
        replaceFirst(u"MMM", monthName(WQDateLocaleKey_ShortMonthNameArray).value_or(QString()));
        replaceFirst(u"MM", numberWith(month, 2));
        replaceFirst(u"M", numberWith(month, 0));
        replaceFirst(u"EEEE", weekdayName(WQDateLocaleKey_WeekDayNameArray).value_or(QString()));
        replaceFirst(u"EEE", weekdayName(WQDateLocaleKey_ShortWeekDayNameArray).value_or(QString()));
        return text;
    }

private:
    static void appendName(QString& out, const std::optional<QString>& name)
    {
        if (name)
            out.append(*name);
    }

    const WQDate& _wq_date;
    const std::optional<QVariantMap>& _wq_locale;
};

} // namespace

QString WQDate::cacheKeyForFormat(const QString& format, const std::optional<QVariantMap>& locale) const
{
    QString key;
    key.reserve(format.size() + 48);
    key.append(format);
    key.append(u' ');
    appendUnsigned(key, quint64(localeIndex(locale)));
    key.append(u' ');
    appendPadded(key, _wq_year);
    key.append(u' ');
    appendUnsigned(key, _wq_month);
    key.append(u' ');
    appendUnsigned(key, _wq_day);
    return key;
}

std::optional<QString> WQDate::cachedValueForKey(const QString& key)
{
    const TextCache& cache = textCache();
    const auto it = cache.texts.constFind(key);
    if (it == cache.texts.constEnd())
        return std::nullopt;
    return *it;
}

void WQDate::cacheValue(const QString& value, const QString& key)
{
    textCache().texts.insert(key, value);
}

QString WQDate::_wq_renderWithCalendarFormat(const QString& format, const std::optional<QVariantMap>& locale) const
{
    const Renderer renderer(*this, locale);
    return format.contains(u'%') ? renderer.directives(format) : renderer.patterns(format);
}

QString WQDate::descriptionWithCalendarFormat(const QString& format, const std::optional<QVariantMap>& locale) const
{
    const QString key = cacheKeyForFormat(format, locale);
    TextCache& cache = textCache();
    if (const auto it = cache.texts.constFind(key); it != cache.texts.constEnd())
        return *it;
    QString text = _wq_renderWithCalendarFormat(format, locale);
    cache.texts.insert(key, text);
    return text;
}

QString WQDate::descriptionWithCalendarFormat(const QString& format) const
{
    return descriptionWithCalendarFormat(format, WQSystemDateSettings::systemDefinedDateInformation());
}

QString WQDate::description() const
{
    return descriptionWithCalendarFormat(QStringLiteral("%Y-%m-%d"));
}

QString WQDate::descriptionWithLocale(const QVariantMap& locale) const
{
    return descriptionWithCalendarFormat(QStringLiteral("%Y-%m-%d"), locale);
}

QString WQDate::debugDescription() const
{
    QString text;
    appendPadded(text, _wq_year);
    text.append(u'-');
    appendPadded(text, _wq_month, 2);
    text.append(u'-');
    appendPadded(text, _wq_day, 2);
    return text;
}

} // namespace wq
