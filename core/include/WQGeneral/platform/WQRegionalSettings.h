#pragma once
/// \class wq::WQRegionalSettings
/// The user's regional settings, read from ICU (CLDR) with each category's
/// locale taken from the environment the way POSIX does: LC_ALL, then the
/// category's own variable, then LANG; "C" and "POSIX" (C.UTF-8 too) mean
/// en_US, so dates, amounts, whole numbers and decimals agree: M/d/yy,
/// $1,234.50, 1,234,567 and 4.25.
/// An application may pin any category at run time; every change posts
/// kWQNotif_CurrentLocaleDidChange (and, for the numeric and monetary
/// categories, kWQNotif_AppleNumberPreferencesChanged) on the distributed centre.

#include <WQGeneral/WQCoreExport.h>

#include <QString>
#include <QStringList>

namespace wq {

/// \addtogroup platform
/// @{

/// Posted on the distributed centre when any category's locale changes.
inline const QString kWQNotif_CurrentLocaleDidChange = QStringLiteral("NSCurrentLocaleDidChangeNotification");
/// Posted on the distributed centre when number or currency settings change.
inline const QString kWQNotif_AppleNumberPreferencesChanged = QStringLiteral("AppleNumberPreferencesChangedNotification");

class WQ_CORE_EXPORT WQRegionalSettings {
public:
    /// The categories of regional settings, each with its own locale.
    enum class Category { Time, Numeric, Monetary, Messages };
    /// Lengths of a date pattern, as ICU names them.
    enum class DateStyle { Short, Medium, Long, Full };

    /// ICU locale identifier in force for a category, e.g. "en_US", "de_DE".
    static QString localeName(Category category);

    /// Pins a category to an ICU or POSIX locale name ("de_DE", "fr_FR.UTF-8",
    /// "C"); an empty name goes back to the environment.
    static void setLocale(Category category, const QString& name);
    /// Pins every category at once (one notification).
    static void setAllLocales(const QString& name);
    /// Forgets every override and re-reads the environment.
    static void resetToEnvironment();

    /// The system's settings changed under the same locale names (the
    /// toolkit reports it): caches are dropped and both notifications posted.
    static void noteSystemChange();

    /// Incremented on every change, so caches can tell they are stale cheaply.
    static quint64 generation();

    /// ICU date pattern (pattern letters as ICU gives them) of the time locale,
    /// date only: Short gives M/d/yy for en_US, dd.MM.yy for de_DE.
    static QString datePattern(DateStyle style);
    /// January first / Sunday first, in the time locale, format context.
    /// Where ICU lacks the locale's language or script (be_BY\@latin), the
    /// C library's names of that locale stand in.
    static QStringList monthNames();
    /// Abbreviated month names, January first.
    static QStringList shortMonthNames();
    /// Full weekday names, Sunday first.
    static QStringList weekdayNames();
    /// Abbreviated weekday names, Sunday first.
    static QStringList shortWeekdayNames();

    /// Converts "de_DE.UTF-8@euro", "C", "POSIX" and friends to an ICU name;
    /// a modifier that names a script stays (sr_RS\@latin is sr_Latn_RS).
    static QString icuNameFromPosix(const QString& posixName);
};

/// @}

} // namespace wq
