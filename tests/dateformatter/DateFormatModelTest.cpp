#include "DateFormatterTesting.h"

#include <WQGeneral/dates/WQDate.h>

#include <WQTestSupport.h>

using namespace wq;

namespace {

struct Model {
    int month, day;
    bool padMonth, padDay, century;
    QString separator;
};

Model modelOf(const WQDateFormatter& f)
{
    return {f.monthPosition(), f.dayPosition(), f.zeroPadMonth(), f.zeroPadDate(), f.showCentury(),
            f.localizedSeparator()};
}

void expectModel(const QString& format, const Model& expected)
{
    SCOPED_TRACE(format.toStdString());
    const Model got = modelOf(WQDateFormatter(format));
    EXPECT_EQ(got.month, expected.month);
    EXPECT_EQ(got.day, expected.day);
    EXPECT_EQ(got.padMonth, expected.padMonth);
    EXPECT_EQ(got.padDay, expected.padDay);
    EXPECT_EQ(got.century, expected.century);
    EXPECT_EQ(got.separator, expected.separator);
}

} // namespace

TEST(DateFormatModel, WorkedFormats)
{
    expectModel("M/d/yy", {0, 1, false, false, false, "/"});
    expectModel("dd.MM.yy", {1, 0, true, true, false, "."});
    expectModel("yyyy-MM-dd", {1, 2, true, true, true, "-"});
    expectModel("y-MM-dd", {1, 2, true, true, false, "-"});
    expectModel("%m/%d/%y", {0, 1, true, true, true, "/"});
    expectModel("%1m/%e/%Y", {0, 1, false, false, false, "/"});
}

TEST(DateFormatModel, SeparatorTakenFromWhereAFieldStops)
{
    // The character a year run stops at is the separator and is not read as
    // a field: the month comes from the second M.
    expectModel("yyMMdd", {1, 2, false, true, false, "M"});
    expectModel("d MMM y", {1, 0, true, false, false, "M"});
    // No separator at all: a one-character string holding NUL.
    WQDateFormatter bare("d");
    EXPECT_EQ(bare.localizedSeparator(), QString(QChar(0)));
}

TEST(DateFormatModel, AnotherFormatKeepsFlagsOfFieldsItLacks)
{
    WQDateFormatter f("M/d/yy");
    f.setDateFormat("dd.MM.yy");
    EXPECT_EQ(f.dateFormat(), "dd.MM.yy");
    expectModel("dd.MM.yy", modelOf(f));
    f.setDateFormat("MM/yy");
    EXPECT_EQ(f.monthPosition(), 0);
    EXPECT_EQ(f.dayPosition(), 0);
    EXPECT_TRUE(f.zeroPadDate());
    EXPECT_EQ(f.localizedSeparator(), "/");
}

TEST(DateFormatModel, DisplaysDatesAndStringsOnly)
{
    test::ScopedLocale locale("en_US");
    const WQDate date(2024, 3, 5);
    EXPECT_EQ(WQDateFormatter("M/d/yy").stringForObjectValue(QVariant::fromValue(date)), "3/5/24");
    EXPECT_EQ(WQDateFormatter("dd.MM.yy").stringForObjectValue(QVariant::fromValue(date)), "05.03.24");
    EXPECT_EQ(WQDateFormatter("%Y-%m-%d").stringForObjectValue(QVariant::fromValue(date)), "2024-03-05");
    EXPECT_EQ(WQDateFormatter("EEEE, MMMM d, y").stringForObjectValue(QVariant::fromValue(date)),
              "Tuesday, 3arch 5, 2024");

    const WQDateFormatter f("M/d/yy");
    EXPECT_EQ(f.stringForObjectValue(QStringLiteral("not a date")), "not a date");
    EXPECT_EQ(f.stringForObjectValue(42), std::nullopt);
    EXPECT_EQ(f.stringForObjectValue(QVariant()), std::nullopt);
}

TEST(DateFormatModel, ClassSideIsTheSystemSettings)
{
    test::ScopedLocale us("en_US");
    EXPECT_EQ(WQDateFormatter::shortDateFormat(), "M/d/yy");
    const WQDateFormatter f(WQDateFormatter::shortDateFormat());
    EXPECT_EQ(f.localizedSeparator(), "/");
}
