#include <WQGeneral/platform/WQRegionalSettings.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include "detail/WQIcuLocale.h"
#include "detail/WQIcuStrings.h"

#include <unicode/datefmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/smpdtfmt.h>

#include <langinfo.h>
#include <clocale>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <type_traits>

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

// The name a category was given, before it is turned into an ICU name.
QString posixName(WQRegionalSettings::Category category)
{
    const QString& pinned = state().overrides[std::size_t(category)];
    return pinned.isEmpty() ? fromEnvironment(category) : pinned;
}

// Month and weekday names of the C library, for a time locale that ICU has
// no data for in its language or script (be_BY@latin, tt_RU@iqtelif).
struct CLibraryNames {
    QStringList months, shortMonths, weekdays, shortWeekdays;
};

using CLocale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

// The names are read as UTF-8, so only a UTF-8 variant of the locale will do.
CLocale openUtf8Locale(const QString& name)
{
    CLocale handle(newlocale(LC_TIME_MASK | LC_CTYPE_MASK, name.toLocal8Bit().constData(), nullptr), &freelocale);
    if (handle && std::strcmp(nl_langinfo_l(CODESET, handle.get()), "UTF-8") != 0)
        handle.reset();
    return handle;
}

std::optional<CLibraryNames> cLibraryNames(const QString& name)
{
    CLocale handle = openUtf8Locale(name);
    if (!handle) {
        // de_DE@euro is Latin-9; de_DE.UTF-8 has the same names.
        const qsizetype at = name.indexOf(u'@');
        handle = openUtf8Locale(name.left(at).section(u'.', 0, 0) + QStringLiteral(".UTF-8")
                                + (at < 0 ? QString() : name.mid(at)));
    }
    if (!handle)
        return std::nullopt;
    const auto list = [&handle](nl_item first, int count) {
        QStringList names;
        for (int i = 0; i < count; ++i)
            names.append(QString::fromUtf8(nl_langinfo_l(nl_item(first + i), handle.get())));
        return names;
    };
    return CLibraryNames{list(MON_1, 12), list(ABMON_1, 12), list(DAY_1, 7), list(ABDAY_1, 7)};
}

// The time locale's names, rebuilt when the settings change.
struct TimeNames {
    quint64 builtFor = 0;
    std::unique_ptr<icu::DateFormatSymbols> symbols;
    std::optional<CLibraryNames> cLibrary;
};

const TimeNames& timeNames()
{
    static TimeNames names;
    if (names.symbols && names.builtFor == state().generation)
        return names;
    const icu::Locale wanted = icu_locale::forCategory(WQRegionalSettings::Category::Time);
    UErrorCode status = U_ZERO_ERROR;
    auto fresh = std::make_unique<icu::DateFormatSymbols>(wanted, status);
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        fresh = std::make_unique<icu::DateFormatSymbols>(icu::Locale::getRoot(), status);
    }
    // ICU answers a locale it lacks with its default locale's names.
    status = U_ZERO_ERROR;
    const icu::Locale found = fresh->getLocale(ULOC_VALID_LOCALE, status);
    const bool covered = std::strcmp(found.getLanguage(), wanted.getLanguage()) == 0
        && (!*wanted.getScript() || std::strcmp(found.getScript(), wanted.getScript()) == 0);
    names.cLibrary = covered ? std::nullopt : cLibraryNames(posixName(WQRegionalSettings::Category::Time));
    names.symbols = std::move(fresh);
    names.builtFor = state().generation;
    return names;
}

QStringList monthList(icu::DateFormatSymbols::DtWidthType width)
{
    const TimeNames& names = timeNames();
    if (names.cLibrary)
        return width == icu::DateFormatSymbols::WIDE ? names.cLibrary->months : names.cLibrary->shortMonths;
    int32_t count = 0;
    const icu::UnicodeString* list = names.symbols->getMonths(count, icu::DateFormatSymbols::FORMAT, width);
    return icu_strings::fromIcu(icu_strings::icuArray(list, count, 12));
}

QStringList weekdayList(icu::DateFormatSymbols::DtWidthType width)
{
    const TimeNames& names = timeNames();
    if (names.cLibrary)
        return width == icu::DateFormatSymbols::WIDE ? names.cLibrary->weekdays : names.cLibrary->shortWeekdays;
    int32_t count = 0;
    // ICU's list starts with an empty entry so that UCAL_SUNDAY (1) indexes Sunday.
    const icu::UnicodeString* list = names.symbols->getWeekdays(count, icu::DateFormatSymbols::FORMAT, width);
    const std::span<const icu::UnicodeString> all = icu_strings::icuArray(list, count, 8);
    return all.empty() ? QStringList() : icu_strings::fromIcu(all.subspan(1));
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
    QString modifier;
    const qsizetype at = name.indexOf(u'@');
    if (at >= 0) {
        modifier = name.mid(at + 1);
        name.truncate(at);
    }
    const qsizetype dot = name.indexOf(u'.');
    if (dot >= 0)
        name.truncate(dot);
    // ICU's POSIX locale neither groups amounts nor whole numbers the same
    // way; United States English keeps every field consistent.
    if (name.isEmpty() || name == u"C" || name == u"POSIX")
        return QStringLiteral("en_US");
    name.replace(u'-', u'_');
    // A modifier that names a script picks the locale's other writing
    // (sr_RS@latin is sr_Latn_RS); the others (@euro) change nothing ICU knows.
    static const std::pair<const char16_t*, const char16_t*> scripts[] = {
        {u"latin", u"Latn"}, {u"cyrillic", u"Cyrl"}, {u"devanagari", u"Deva"}, {u"iqtelif", u"Latn"}};
    for (const auto& [posix, script] : scripts) {
        if (modifier == posix) {
            const qsizetype underscore = name.indexOf(u'_');
            name.insert(underscore < 0 ? name.size() : underscore, u'_' + QString::fromUtf16(script));
            break;
        }
    }
    return name;
}

QString WQRegionalSettings::localeName(Category category)
{
    return icuNameFromPosix(posixName(category));
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
        icu::DateFormat::createDateInstance(icuStyle, icu_locale::forCategory(Category::Time)));
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
