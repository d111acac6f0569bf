#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "dateformatter/WQDateIncrementKeys.h"
#include "detail/WQIcuStrings.h"

#include <unicode/datefmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <ctime>
#include <memory>

namespace wq {

namespace {

struct DateInformation {
    std::optional<QVariantMap> cached;
    quint64 builtFor = 0;          // regional-settings generation it was built for
    bool observing = false;
};

DateInformation& information()
{
    static DateInformation state;
    return state;
}

QVariantMap buildDateInformation()
{
    const QStringList months = WQRegionalSettings::monthNames();
    QVariantMap names;
    // Holds the month names, not a format: nothing reads a format from it.
    names.insert(WQDateLocaleKey_TimeDateFormatString, months);
    names.insert(WQDateLocaleKey_MonthNameArray, months);
    names.insert(WQDateLocaleKey_ShortMonthNameArray, WQRegionalSettings::shortMonthNames());
    names.insert(WQDateLocaleKey_WeekDayNameArray, WQRegionalSettings::weekdayNames());
    names.insert(WQDateLocaleKey_ShortWeekDayNameArray, WQRegionalSettings::shortWeekdayNames());
    return names;
}

// One short date-and-time formatter, remade when the time locale changes.
// It formats local wall-clock time as if it were GMT, so the local time
// follows the process's TZ even where ICU cached an older default zone.
struct DateTimeFormatter {
    std::unique_ptr<icu::DateFormat> format;
    QString localeName;
};

icu::DateFormat* shortDateTimeFormatter()
{
    static DateTimeFormatter shared;
    const QString locale = WQRegionalSettings::localeName(WQRegionalSettings::Category::Time);
    if (!shared.format || shared.localeName != locale) {
        shared.format.reset(icu::DateFormat::createDateTimeInstance(icu::DateFormat::kShort, icu::DateFormat::kShort,
                                                                    icu::Locale(locale.toLatin1().constData())));
        if (shared.format)
            shared.format->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString(u"GMT")));
        shared.localeName = locale;
    }
    return shared.format.get();
}

// The short pattern in a form a date field can both show and read: the day,
// month and year in the locale's order, as numbers, joined by the one
// separator a user types. Eras, weekdays, quoted words and bidirectional
// marks go; so do a trailing separator and the blank after one
// ("yy. M. d." is "yy.M.d"). A separator that is also an increment key
// ("y-MM-dd") is written "/", since typing "-" steps the date instead.
QString entryDateFormat(const QString& pattern)
{
    QString fields[3]; // in the pattern's order
    int count = 0;
    QChar separator, blank;
    const auto seen = [&](QChar letter) {
        for (int i = 0; i < count; ++i)
            if (fields[i].front() == letter)
                return true;
        return false;
    };
    const qsizetype n = pattern.size();
    for (qsizetype i = 0; i < n;) {
        const QChar c = pattern[i];
        if (c == u'\'') {
            // A quoted word ('' within it is a quote), or '' for a quote.
            qsizetype end = i + 1;
            if (end < n && pattern[end] == u'\'') {
                i = end + 1;
                continue;
            }
            while (end < n && (pattern[end] != u'\'' || (end + 1 < n && pattern[end + 1] == u'\'')))
                end += pattern[end] == u'\'' ? 2 : 1;
            i = end + 1;
            continue;
        }
        qsizetype run = 1;
        while (i + run < n && pattern[i + run] == c)
            ++run;
        i += run;
        if (c.isLetter()) {
            // Pattern letters are ASCII; other letters are words, dropped.
            QChar letter;
            if (c == u'y' || c == u'Y' || c == u'u' || c == u'r')
                letter = u'y';
            else if (c == u'M' || c == u'L')
                letter = u'M';
            else if (c == u'd')
                letter = u'd';
            if (letter.isNull() || seen(letter) || count == 3)
                continue;
            // Month and day as numbers, never names.
            fields[count++] = QString(letter == u'y' ? run : std::min<qsizetype>(run, 2), letter);
        } else if (count > 0 && c.category() != QChar::Other_Format) {
            if (c.isSpace())
                blank = u' ';
            else if (separator.isNull())
                separator = c;
        }
    }
    if (count == 0)
        return pattern;
    if (separator.isNull())
        separator = blank.isNull() ? QChar(u'/') : blank;
    if (dateformatter::isIncrementKey(separator.unicode()))
        separator = u'/';
    QString format = fields[0];
    for (int i = 1; i < count; ++i)
        format += separator + fields[i];
    return format;
}

} // namespace

QString WQSystemDateSettings::shortDateFormat()
{
    return entryDateFormat(WQRegionalSettings::datePattern(WQRegionalSettings::DateStyle::Short));
}

QString WQSystemDateSettings::longDateFormat()
{
    // The full style (with the weekday), not the platform's "long" one.
    return WQRegionalSettings::datePattern(WQRegionalSettings::DateStyle::Full);
}

QVariantMap WQSystemDateSettings::systemDefinedDateInformation()
{
    DateInformation& state = information();
    const quint64 generation = WQRegionalSettings::generation();
    if (state.cached && state.builtFor == generation)
        return *state.cached;
    state.cached = buildDateInformation();
    state.builtFor = generation;
    if (!state.observing) {
        WQNotificationCenter::distributedCenter().addObserver(
            &state, kWQNotif_CurrentLocaleDidChange, nullptr,
            [](const WQNotification& notification) { _wq_defaultsChanged(notification); });
        state.observing = true;
    }
    return *state.cached;
}

void WQSystemDateSettings::_wq_defaultsChanged(const WQNotification&)
{
    information().cached.reset();
}

QString WQSystemDateSettings::stringWithFixedFormat(const QString& format, const QDateTime& moment)
{
    if (!moment.isValid())
        return QString();
    // Whole seconds, truncated toward zero.
    const std::time_t seconds = std::time_t(moment.toMSecsSinceEpoch() / 1000);
    std::tm local{};
    tzset();
    if (!localtime_r(&seconds, &local))
        return QString();
    char buffer[256];
    const std::size_t length = std::strftime(buffer, sizeof buffer, format.toUtf8().constData(), &local);
    // A result that does not fit leaves the buffer undefined: answer nothing.
    return QString::fromUtf8(buffer, qsizetype(length));
}

std::optional<QDateTime> WQSystemDateSettings::nsdateWithFixedFormat(const QString& format, const QString& text)
{
    // Every field starts at zero, daylight-saving flag included (standard time).
    std::tm parsed{};
    if (!strptime(text.toUtf8().constData(), format.toUtf8().constData(), &parsed))
        return std::nullopt;
    tzset();
    const std::time_t seconds = std::mktime(&parsed);
    return QDateTime::fromSecsSinceEpoch(qint64(seconds));
}

QString WQSystemDateSettings::shortDateTimeStringWithNSDate(const std::optional<QDateTime>& moment)
{
    const QDateTime local = (moment && moment->isValid() ? *moment : QDateTime::currentDateTime()).toLocalTime();
    const QDateTime wallClock(local.date(), local.time(), Qt::UTC);
    icu::DateFormat* formatter = shortDateTimeFormatter();
    if (!formatter)
        return QString();
    icu::UnicodeString text;
    formatter->format(UDate(wallClock.toMSecsSinceEpoch()), text);
    return icu_strings::fromIcu(text);
}

} // namespace wq
