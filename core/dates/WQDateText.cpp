// Rendering of dates through percent directives ("%Y-%m-%d") or date-pattern
// letters ("M/d/yy"), with a cache in each thread: a table of dated rows
// asks for the same few hundred texts over and over while it scrolls.

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include "WQDateFormatError.h"
#include "WQDateNumbers.h"
#include "WQDateTesting.h"
#include "WQDateTextCache.h"

#include <QHash>
#include <QList>

#include <array>
#include <atomic>
#include <limits>
#include <mutex>
#include <utility>

namespace wq {

using _wq_numbers::appendPadded;
using _wq_numbers::appendUnsigned;

namespace {

// Enough for every date a long register shows in a few formats; the least
// recently used text makes room beyond that.
constexpr qsizetype kCachedTexts = 8192;
// Distinct formats numbered before the numbering (and every cache) starts over.
constexpr qsizetype kNumberedFormats = 1024;
constexpr qint64 kNoLocale = std::numeric_limits<qint64>::max();
constexpr quint32 kNoLocaleKey = std::numeric_limits<quint32>::max();

// What every thread shares: the locale list (an index is part of the public
// key text) and the numbers given to formats. Locked; a thread asks only
// when its own note of the last locale or format does not answer.
class Registry {
public:
    Registry() { _locales.reserve(2); }

    qint64 localeIndex(const QVariantMap& locale)
    {
        const std::lock_guard lock(_mutex);
        qint64 index = _locales.indexOf(locale);
        if (index < 0) {
            index = _locales.size();
            _locales.append(locale);
        }
        return index;
    }

    // The format's number, and the numbering it belongs to.
    std::pair<quint32, quint32> formatNumber(const QString& format)
    {
        const std::lock_guard lock(_mutex);
        const auto it = _formatNumbers.constFind(format);
        if (it != _formatNumbers.constEnd())
            return {*it, _numbering.load(std::memory_order_relaxed)};
        if (_formatNumbers.size() >= kNumberedFormats) {
            // Numbers are about to be reused: no text stored under an
            // old one may answer.
            _formatNumbers.clear();
            _numbering.fetch_add(1, std::memory_order_relaxed);
        }
        const auto number = quint32(_formatNumbers.size());
        _formatNumbers.insert(format, number);
        return {number, _numbering.load(std::memory_order_relaxed)};
    }

    quint32 numbering() const { return _numbering.load(std::memory_order_relaxed); }

private:
    std::mutex _mutex;
    QList<QVariantMap> _locales;
    QHash<QString, quint32> _formatNumbers;
    std::atomic<quint32> _numbering{0};
};

Registry& registry()
{
    static Registry shared;   // initialised once, thread-safely
    return shared;
}

// Each thread keeps its own texts, so that a hit takes no lock: a thread
// scrolling a table never waits for another.
class TextCache {
public:
    qint64 localeIndex(const QVariantMap* locale)
    {
        if (!locale)
            return kNoLocale;
        // Skips the value comparisons while the same shared map comes again.
        if (_lastLocaleIndex < 0 || !locale->isSharedWith(_lastLocale)) {
            _lastLocaleIndex = registry().localeIndex(*locale);
            _lastLocale = *locale;
        }
        return _lastLocaleIndex;
    }

    WQDateTextCache::Key keyFor(const WQDate& date, const QString& format, qint64 locale)
    {
        return {date.yearOfCommonEra(), formatNumber(format), locale == kNoLocale ? kNoLocaleKey : quint32(locale),
                quint8(date.monthOfYear()), quint8(date.dayOfMonth())};
    }

    const QString* find(const WQDateTextCache::Key& key) { return _texts.find(key); }
    void insert(const WQDateTextCache::Key& key, const QString& text) { _texts.insert(key, text); }

    // Keys given as text that no rendering makes.
    std::optional<QString> findOther(const QString& key) const
    {
        const auto it = _otherKeys.constFind(key);
        return it == _otherKeys.constEnd() ? std::nullopt : std::optional<QString>(*it);
    }
    void insertOther(const QString& key, const QString& text)
    {
        if (_otherKeys.size() >= kCachedTexts && !_otherKeys.contains(key))
            _otherKeys.clear();
        _otherKeys.insert(key, text);
    }

    qsizetype size() const { return _texts.size() + _otherKeys.size(); }

private:
    quint32 formatNumber(const QString& format)
    {
        if (_numbering != registry().numbering()) {
            _startOver(registry().numbering());
        } else if (_lastFormatNumber >= 0 && (format.isSharedWith(_lastFormat) || format == _lastFormat)) {
            return quint32(_lastFormatNumber);
        }
        const auto [number, numbering] = registry().formatNumber(format);
        if (numbering != _numbering)
            _startOver(numbering);
        _lastFormat = format;
        _lastFormatNumber = number;
        return number;
    }

    void _startOver(quint32 numbering)
    {
        _texts.clear();
        _lastFormatNumber = -1;
        _numbering = numbering;
    }

    WQDateTextCache _texts{kCachedTexts};
    QHash<QString, QString> _otherKeys;
    quint32 _numbering = 0;
    QString _lastFormat;
    qint64 _lastFormatNumber = -1;
    QVariantMap _lastLocale;
    qint64 _lastLocaleIndex = -1;
};

TextCache& textCache()
{
    thread_local TextCache cache;   // made on a thread's first use
    return cache;
}

// The fields of a text key, "<format> <locale index> <year> <month> <day>",
// when it is written exactly as cacheKeyForFormat writes keys.
struct TextKey {
    QString format;
    qint64 locale = 0;
    qint64 year = 0;
    quint8 month = 0;
    quint8 day = 0;
};

std::optional<quint64> canonicalUnsigned(QStringView digits)
{
    if (digits.isEmpty() || digits.size() > 20 || (digits.size() > 1 && digits.front() == u'0'))
        return std::nullopt;
    quint64 value = 0;
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9' || value > (std::numeric_limits<quint64>::max() - (c.unicode() - u'0')) / 10)
            return std::nullopt;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

std::optional<TextKey> parseTextKey(const QString& key)
{
    QStringView fields[4];
    qsizetype end = key.size();
    for (int i = 3; i >= 0; --i) {
        const qsizetype space = end > 0 ? key.lastIndexOf(u' ', end - 1) : -1;
        if (space < 0)
            return std::nullopt;
        fields[i] = QStringView(key).sliced(space + 1, end - space - 1);
        end = space;
    }
    const auto locale = canonicalUnsigned(fields[0]);
    const bool negative = fields[1].startsWith(u'-');
    const auto magnitude = canonicalUnsigned(negative ? fields[1].sliced(1) : fields[1]);
    const auto month = canonicalUnsigned(fields[2]);
    const auto day = canonicalUnsigned(fields[3]);
    if (!locale || !magnitude || !month || !day || *month > 255 || *day > 255)
        return std::nullopt;
    // Locale indexes beyond what a key holds are left to the text keys.
    if (*locale != quint64(kNoLocale) && *locale >= kNoLocaleKey)
        return std::nullopt;
    const quint64 yearLimit = negative ? quint64(std::numeric_limits<qint64>::max()) + 1
                                       : quint64(std::numeric_limits<qint64>::max());
    if (*magnitude > yearLimit || (negative && *magnitude == 0))
        return std::nullopt;
    const qint64 year = negative ? qint64(quint64(0) - *magnitude) : qint64(*magnitude);
    return TextKey{key.left(end), qint64(*locale), year, quint8(*month), quint8(*day)};
}

// The name at `index` of a locale entry, or nothing when the locale, the
// entry or the name is missing.
std::optional<QString> nameAt(const QVariantMap* locale, const QString& key, qint64 index)
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

class Renderer {
public:
    Renderer(const WQDate& date, const QVariantMap* locale) : _wq_date(date), _wq_locale(locale) {}

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
                    _wq_dates::raiseUnknownDirective(format);
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
            default: _wq_dates::raiseUnknownDirective(format);
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
    const QVariantMap* _wq_locale;
};

QString render(const WQDate& date, const QString& format, const QVariantMap* locale)
{
    const Renderer renderer(date, locale);
    return format.contains(u'%') ? renderer.directives(format) : renderer.patterns(format);
}

QString describe(const WQDate& date, const QString& format, const QVariantMap* locale)
{
    TextCache& cache = textCache();
    const WQDateTextCache::Key key = cache.keyFor(date, format, cache.localeIndex(locale));
    if (const QString* text = cache.find(key))
        return *text;
    QString text = render(date, format, locale);
    // The formats may have been numbered afresh while rendering.
    cache.insert(cache.keyFor(date, format, cache.localeIndex(locale)), text);
    return text;
}

} // namespace

QString WQDate::cacheKeyForFormat(const QString& format, const std::optional<QVariantMap>& locale) const
{
    const qint64 index = textCache().localeIndex(locale ? &*locale : nullptr);
    QString key;
    key.reserve(format.size() + 48);
    key.append(format);
    key.append(u' ');
    appendUnsigned(key, quint64(index));
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
    TextCache& cache = textCache();
    const std::optional<TextKey> parsed = parseTextKey(key);
    if (!parsed)
        return cache.findOther(key);
    const WQDate date(Raw{}, parsed->year, parsed->month, parsed->day);
    if (const QString* text = cache.find(cache.keyFor(date, parsed->format, parsed->locale)))
        return *text;
    return std::nullopt;
}

void WQDate::cacheValue(const QString& value, const QString& key)
{
    TextCache& cache = textCache();
    const std::optional<TextKey> parsed = parseTextKey(key);
    if (!parsed) {
        cache.insertOther(key, value);
        return;
    }
    const WQDate date(Raw{}, parsed->year, parsed->month, parsed->day);
    cache.insert(cache.keyFor(date, parsed->format, parsed->locale), value);
}

qsizetype _wq_textCacheSize()
{
    return textCache().size();
}

QString _wq_renderWithCalendarFormat(const WQDate& date, const QString& format,
                                     const std::optional<QVariantMap>& locale)
{
    return render(date, format, locale ? &*locale : nullptr);
}

QString WQDate::descriptionWithCalendarFormat(const QString& format, const std::optional<QVariantMap>& locale) const
{
    return describe(*this, format, locale ? &*locale : nullptr);
}

QString WQDate::descriptionWithCalendarFormat(const QString& format, const QVariantMap& locale) const
{
    return describe(*this, format, &locale);
}

QString WQDate::descriptionWithCalendarFormat(const QString& format) const
{
    const QVariantMap names = WQSystemDateSettings::systemDefinedDateInformation();
    return describe(*this, format, &names);
}

QString WQDate::description() const
{
    return descriptionWithCalendarFormat(QStringLiteral("%Y-%m-%d"));
}

QString WQDate::descriptionWithLocale(const QVariantMap& locale) const
{
    return describe(*this, QStringLiteral("%Y-%m-%d"), &locale);
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
