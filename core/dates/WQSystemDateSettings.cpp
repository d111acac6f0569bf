#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "detail/WQIcuStrings.h"

#include <unicode/datefmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

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

} // namespace

QString WQSystemDateSettings::shortDateFormat()
{
    return WQRegionalSettings::datePattern(WQRegionalSettings::DateStyle::Short);
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
