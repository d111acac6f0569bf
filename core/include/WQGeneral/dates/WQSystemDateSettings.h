#pragma once
/// \class wq::WQSystemDateSettings
/// What the date code needs from the user's regional settings: the short and
/// full date patterns, the month and weekday names (the locale dictionary),
/// and a few fixed-format conversions of QDateTime values.
/// WQDateFormatter derives from this class, so its class side reads the same.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QDateTime>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace wq {

/// \addtogroup dates
/// @{

/// Keys of the locale dictionary. Each value is a QStringList: twelve months
/// January first, or seven weekdays Sunday first.
inline const QString WQDateLocaleKey_TimeDateFormatString = QStringLiteral("NSTimeDateFormatString");
/// Full month names, January first.
inline const QString WQDateLocaleKey_MonthNameArray = QStringLiteral("NSMonthNameArray");
/// Abbreviated month names, January first.
inline const QString WQDateLocaleKey_ShortMonthNameArray = QStringLiteral("NSShortMonthNameArray");
/// Full weekday names, Sunday first.
inline const QString WQDateLocaleKey_WeekDayNameArray = QStringLiteral("NSWeekDayNameArray");
/// Abbreviated weekday names, Sunday first.
inline const QString WQDateLocaleKey_ShortWeekDayNameArray = QStringLiteral("NSShortWeekDayNameArray");

class WQ_CORE_EXPORT WQSystemDateSettings {
public:
    /// The system's short date pattern in the form a date field shows and
    /// reads: day, month and year as numbers in the locale's order, joined by
    /// one separator (M/d/yy for en_US, yy.M.d for ko_KR's "yy. M. d.",
    /// d/M/y for Arabic patterns without their direction marks and era).
    /// A "-" separator, which a date field takes as the step-back key, is
    /// written "/". WQRegionalSettings::datePattern gives the pattern as the
    /// locale writes it.
    static QString shortDateFormat();
    /// The system's full date pattern ("EEEE, MMMM d, y" for en_US).
    static QString longDateFormat();

    /// The locale dictionary, built once and shared until the regional
    /// settings change (two calls in a row answer the same shared map).
    /// The TimeDateFormatString entry holds the month names too; nothing
    /// reads a format from it.
    static QVariantMap systemDefinedDateInformation();

    /// strftime in local time (fractional seconds dropped).
    static QString stringWithFixedFormat(const QString& format, const QDateTime& moment);
    /// strptime from an all-zero broken-down time (standard time), then mktime;
    /// nullopt when the text does not match.
    static std::optional<QDateTime> nsdateWithFixedFormat(const QString& format, const QString& text);
    /// Short date and short time in the time locale; nullopt means now.
    static QString shortDateTimeStringWithNSDate(const std::optional<QDateTime>& moment = std::nullopt);

protected:
    WQSystemDateSettings() = default;
    ~WQSystemDateSettings() = default;

private:
    // Drops the cached dictionary; the next request rebuilds it.
    static void _wq_defaultsChanged(const WQNotification& notification);
};

/// @}

} // namespace wq
