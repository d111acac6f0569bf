#include "DateFormatterTesting.h"

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include <WQTestSupport.h>

using namespace wq;

namespace {

struct Model {
    int month, day;
    bool padMonth, padDay, century;
    QString separator;
    bool operator==(const Model&) const = default;
};

void PrintTo(const Model& m, std::ostream* os)
{
    *os << "month " << m.month << " day " << m.day << " pad " << m.padMonth << m.padDay << " century "
        << m.century << " separator \"" << m.separator.toStdString() << '"';
}

Model modelOf(const WQDateFormatter& f)
{
    return {f.monthPosition(), f.dayPosition(), f.zeroPadMonth(), f.zeroPadDate(), f.showCentury(),
            f.localizedSeparator()};
}

} // namespace

TEST(DateFormatModel, WorkedFormats)
{
    const std::pair<const char*, Model> rows[] = {
        {"M/d/yy", {0, 1, false, false, false, "/"}},
        {"dd.MM.yy", {1, 0, true, true, false, "."}},
        {"yyyy-MM-dd", {1, 2, true, true, true, "-"}},
        {"y-MM-dd", {1, 2, true, true, false, "-"}},
        {"%m/%d/%y", {0, 1, true, true, true, "/"}},
        {"%1m/%e/%Y", {0, 1, false, false, false, "/"}},
        // The character a year run stops at is the separator and is not read
        // as a field: the month comes from the second M.
        {"yyMMdd", {1, 2, false, true, false, "M"}},
        {"d MMM y", {1, 0, true, false, false, "M"}},
    };
    for (const auto& [format, model] : rows)
        EXPECT_EQ(modelOf(WQDateFormatter(format)), model) << format;
    EXPECT_EQ(WQDateFormatter("d/yy/M/M").monthPosition(), 3);
    // No separator at all: a one-character string holding NUL.
    EXPECT_EQ(WQDateFormatter("d").localizedSeparator(), QString(QChar(0)));
}

TEST(DateFormatModel, AnotherFormatKeepsFlagsOfFieldsItLacks)
{
    WQDateFormatter f("M/d/yy");
    f.setDateFormat("dd.MM.yy");
    EXPECT_EQ(f.dateFormat(), "dd.MM.yy");
    EXPECT_EQ(modelOf(f), modelOf(WQDateFormatter("dd.MM.yy")));
    f.setDateFormat("MM/yy");
    EXPECT_EQ(modelOf(f), (Model{0, 0, true, true, false, "/"}));
}

TEST(DateFormatModel, DisplaysDatesAndStringsOnly)
{
    test::ScopedLocale locale("en_US");
    const QVariant date = QVariant::fromValue(WQDate(2024, 3, 5));
    EXPECT_EQ(WQDateFormatter("M/d/yy").stringForObjectValue(date), "3/5/24");
    EXPECT_EQ(WQDateFormatter("dd.MM.yy").stringForObjectValue(date), "05.03.24");
    EXPECT_EQ(WQDateFormatter("%Y-%m-%d").stringForObjectValue(date), "2024-03-05");
    EXPECT_EQ(WQDateFormatter("EEEE, MMMM d, y").stringForObjectValue(date), "Tuesday, 3arch 5, 2024");

    const WQDateFormatter f("M/d/yy");
    EXPECT_EQ(f.stringForObjectValue(QStringLiteral("not a date")), "not a date");
    EXPECT_EQ(f.stringForObjectValue(42), std::nullopt);
    EXPECT_EQ(f.stringForObjectValue(QVariant()), std::nullopt);

    // The class side answers the system's settings.
    test::ScopedLocale german("de_DE");
    EXPECT_EQ(WQDateFormatter::shortDateFormat(), WQSystemDateSettings::shortDateFormat());
    EXPECT_EQ(WQDateFormatter::shortDateFormat(), "dd.MM.yy");
}
