#include <WQGeneral/platform/WQRegionalSettings.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include "detail/WQIcuStrings.h"

#include <unicode/datefmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/smpdtfmt.h>

#include <array>
#include <cstdlib>
#include <memory>

namespace wq {
namespace {

constexpr std::size_t kCategoryCount = 4;

struct State {
    std::array<QString, kCategoryCount> overrides;
    quint64 generation = 1;
};

State& state()
{
    static State s;
    return s;
}

const char* envVariable(WQRegionalSettings::Category category)
{
    switch (category) {
    case WQRegionalSettings::Category::Time: return "LC_TIME";
    case WQRegionalSettings::Category::Numeric: return "LC_NUMERIC";
    case WQRegionalSettings::Category::Monetary: return "LC_MONETARY";
    case WQRegionalSettings::Category::Messages: return "LC_MESSAGES";
    }
    return "LANG";
}

QString fromEnvironment(WQRegionalSettings::Category category)
{
    for (const char* name : {"LC_ALL", envVariable(category), "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value)
            return QString::fromLocal8Bit(value);
    }
    return QStringLiteral("C");
}

icu::Locale icuLocale(WQRegionalSettings::Category category)
{
    return icu::Locale(WQRegionalSettings::localeName(category).toLatin1().constData());
}

// One symbol table per time locale, rebuilt when the settings change.
const icu::DateFormatSymbols* timeSymbols()
{
    static std::unique_ptr<icu::DateFormatSymbols> symbols;
    static quint64 builtFor = 0;
    if (!symbols || builtFor != state().generation) {
        UErrorCode status = U_ZERO_ERROR;
        auto fresh = std::make_unique<icu::DateFormatSymbols>(icuLocale(WQRegionalSettings::Category::Time), status);
        if (U_FAILURE(status)) {
            status = U_ZERO_ERROR;
            fresh = std::make_unique<icu::DateFormatSymbols>(icu::Locale::getRoot(), status);
        }
        symbols = std::move(fresh);
        builtFor = state().generation;
    }
    return symbols.get();
}

QStringList monthList(icu::DateFormatSymbols::DtWidthType width)
{
    int32_t count = 0;
    const icu::UnicodeString* names =
        timeSymbols()->getMonths(count, icu::DateFormatSymbols::FORMAT, width);
    return icu_strings::fromIcu(names, count, 12);
}

QStringList weekdayList(icu::DateFormatSymbols::DtWidthType width)
{
    int32_t count = 0;
    // ICU's list starts with an empty entry so that UCAL_SUNDAY (1) indexes Sunday.
    const icu::UnicodeString* names =
        timeSymbols()->getWeekdays(count, icu::DateFormatSymbols::FORMAT, width);
    return count > 1 ? icu_strings::fromIcu(names + 1, count - 1, 7) : QStringList();
}

void announce(bool numbersChanged)
{
    ++state().generation;
    auto& center = WQNotificationCenter::distributedCenter();
    center.postNotificationName(kWQNotif_CurrentLocaleDidChange);
    if (numbersChanged)
        center.postNotificationName(kWQNotif_AppleNumberPreferencesChanged);
}

} // namespace

QString WQRegionalSettings::icuNameFromPosix(const QString& posixName)
{
    QString name = posixName.trimmed();
    const qsizetype at = name.indexOf(u'@');
    if (at >= 0)
        name.truncate(at);
    const qsizetype dot = name.indexOf(u'.');
    if (dot >= 0)
        name.truncate(dot);
    // ICU's POSIX locale neither groups amounts nor whole numbers the same
    // way; United States English keeps every field consistent.
    if (name.isEmpty() || name == u"C" || name == u"POSIX")
        return QStringLiteral("en_US");
    name.replace(u'-', u'_');
    return name;
}

QString WQRegionalSettings::localeName(Category category)
{
    const QString& pinned = state().overrides[std::size_t(category)];
    return icuNameFromPosix(pinned.isEmpty() ? fromEnvironment(category) : pinned);
}

void WQRegionalSettings::setLocale(Category category, const QString& name)
{
    state().overrides[std::size_t(category)] = name;
    announce(category == Category::Numeric || category == Category::Monetary);
}

void WQRegionalSettings::setAllLocales(const QString& name)
{
    state().overrides.fill(name);
    announce(true);
}

void WQRegionalSettings::resetToEnvironment()
{
    state().overrides.fill(QString());
    announce(true);
}

void WQRegionalSettings::noteSystemChange()
{
    announce(true);
}

quint64 WQRegionalSettings::generation()
{
    return state().generation;
}

QString WQRegionalSettings::datePattern(DateStyle style)
{
    icu::DateFormat::EStyle icuStyle = icu::DateFormat::kShort;
    switch (style) {
    case DateStyle::Short: icuStyle = icu::DateFormat::kShort; break;
    case DateStyle::Medium: icuStyle = icu::DateFormat::kMedium; break;
    case DateStyle::Long: icuStyle = icu::DateFormat::kLong; break;
    case DateStyle::Full: icuStyle = icu::DateFormat::kFull; break;
    }
    std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateInstance(icuStyle, icuLocale(Category::Time)));
    auto* simple = dynamic_cast<icu::SimpleDateFormat*>(format.get());
    if (!simple)
        return QStringLiteral("M/d/yy");
    icu::UnicodeString pattern;
    simple->toPattern(pattern);
    return icu_strings::fromIcu(pattern);
}

QStringList WQRegionalSettings::monthNames() { return monthList(icu::DateFormatSymbols::WIDE); }
QStringList WQRegionalSettings::shortMonthNames() { return monthList(icu::DateFormatSymbols::ABBREVIATED); }
QStringList WQRegionalSettings::weekdayNames() { return weekdayList(icu::DateFormatSymbols::WIDE); }
QStringList WQRegionalSettings::shortWeekdayNames() { return weekdayList(icu::DateFormatSymbols::ABBREVIATED); }

} // namespace wq
