// What a date formatter makes of its format, what it shows, and how it
// reads a date the user typed.

#include "DateFormatterTesting.h"
#include "DateTesting.h"

#include <WQGeneral/dates/WQSystemDateSettings.h>

using namespace wq;
using test::formatterOn;

namespace {

// "2026-03-07" for a date, the message for a refusal.
QString parsed(const WQDateFormatter& f, const QString& text)
{
    const test::Reading read = test::readWith(f, text);
    if (!read.ok)
        return read.error;
    EXPECT_TRUE(read.error.isNull()) << "a success leaves the error place alone";
    return read.value.value<WQDate>().description();
}

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
        {"%Y-%m-%d", {1, 2, true, true, false, "-"}},
        {"d/yy/M/M", {3, 0, false, false, false, "/"}},
        // A field that ends the format before any separator leaves NUL.
        {"d", {0, 0, false, false, false, QString(QChar(0))}},
        {"ddMM", {1, 0, true, true, false, QString(QChar(0))}},
        {"yyyy", {0, 0, false, false, true, QString(QChar(0))}},
        {"%e %Y", {0, 0, false, false, false, QString(QChar(0))}},
        {"%e.%m", {1, 0, true, false, false, QString(QChar(0))}},
    };
    for (const auto& [format, model] : rows)
        EXPECT_EQ(modelOf(WQDateFormatter(format)), model) << format;
}

TEST(DateFormatModel, AnotherFormatKeepsFlagsOfFieldsItLacksAndIsAnnounced)
{
    test::Heard changes(kWQNotif_FormatterChanged);
    WQDateFormatter f("M/d/yy");
    f.setDateFormat("M/d/yy");
    EXPECT_TRUE(changes.objects.empty()) << "neither the first format nor the same one again";
    f.setDateFormat("dd.MM.yy");
    EXPECT_EQ(f.dateFormat(), "dd.MM.yy");
    EXPECT_EQ(changes.objects, std::vector<const WQNotificationSender*>{&f});
    EXPECT_EQ(modelOf(f), modelOf(WQDateFormatter("dd.MM.yy")));

    // A copy takes the format and the range, then goes its own way.
    f.setDateRange(WQDate(2026, 1, 1), std::nullopt);
    WQDateFormatter copy(f);
    f.setDateFormat("MM/yy");
    EXPECT_EQ(modelOf(f), (Model{0, 0, true, true, false, "/"}));
    EXPECT_EQ(modelOf(copy), modelOf(WQDateFormatter("dd.MM.yy")));
    EXPECT_EQ(copy.minimumDate(), WQDate(2026, 1, 1));
    copy = f;
    const WQDateFormatter& same = copy;
    copy = same;
    EXPECT_EQ(copy.dateFormat(), "MM/yy");
    EXPECT_EQ(modelOf(copy), modelOf(f));
}

TEST(DateFormatModel, DisplaysDatesAndStringsOnly)
{
    test::ScopedLocale locale("en_US");
    // (What each pattern letter and directive shows is the date text's test.)
    const QVariant date = QVariant::fromValue(WQDate(2024, 3, 5));
    EXPECT_EQ(WQDateFormatter("dd.MM.yy").stringForObjectValue(date), "05.03.24");

    const WQDateFormatter f("M/d/yy");
    EXPECT_EQ(f.stringForObjectValue(QStringLiteral("not a date")), "not a date");
    EXPECT_EQ(f.stringForObjectValue(42), std::nullopt);
    EXPECT_EQ(f.stringForObjectValue(QVariant()), std::nullopt);

    // The class side answers the system's settings.
    test::ScopedLocale german("de_DE");
    EXPECT_EQ(WQDateFormatter::shortDateFormat(), WQSystemDateSettings::shortDateFormat());
}

TEST(DateParsing, EveryRuleAndMessage)
{
    // Today is 2026-03-15 throughout.
    struct Row {
        const char* format;
        QString text, expected;
    };
    const Row rows[] = {
        {"M/d/yy", "7", "2026-03-07"}, {"M/d/yy", "2/29", "Invalid day entry."},
        {"M/d/yy", "2/28", "2026-02-28"}, {"M/d/yy", "13/1", "Invalid month entry."},
        {"M/d/yy", "0/5", "Invalid month entry."}, {"M/d/yy", "1/2/95", "1995-01-02"},
        {"M/d/yy", "1/2/94", "2094-01-02"}, {"M/d/yy", "1/2/2024", "2024-01-02"},
        {"M/d/yy", "1/2/0", "2000-01-02"}, {"M/d/yy", "1/2/", "2000-01-02"},
        {"M/d/yy", "1/2/3/4", "Too many numbers for a date."},
        {"M/d/yy", "///", "Too many numbers for a date."},
        {"M/d/yy", "", "You cannot leave the date field blank."}, {"M/d/yy", "1-2-2024", "2026-03-01"},
        {"M/d/yy", "12abc/3", "2026-12-03"},
        // Numbers read like the C library: month and day keep their low 8
        // bits, the year its low 32; blanks and a sign may lead, letters read as 0.
        {"M/d/yy", "257/1/2024", "2024-01-01"}, {"M/d/yy", "1/256/2024", "Invalid day entry."},
        {"M/d/yy", "1/2/4294969320", "2024-01-02"}, {"M/d/yy", "-1/2", "Invalid month entry."},
        {"M/d/yy", " 3/\t+4/\r\n\v\f26", "2026-03-04"}, {"M/d/yy", "x/4", "Invalid month entry."},
        // Negative and zero years are put into today's century.
        {"M/d/yy", "1/2/-5", "1995-01-02"},
        // Far too many digits saturate instead of wrapping into a valid date.
        {"M/d/yy", "99999999999999999999999999/1/1", "Invalid month entry."},
        {"M/d/yy", "1/1/99999999999999999999999999", "1999-01-01"}, // low 32 bits: -1
        {"M/d/yy", "1/1/-99999999999999999999999999", "2000-01-01"}, // low 32 bits: 0
        // Arabic-Indic digits are no digits to the C library.
        {"M/d/yy", QString::fromUtf8("\u0663/4"), "Invalid month entry."},
        {"dd.MM.yy", "3.4", "2026-04-03"}, {"dd.MM.yy", "3.4.26", "2026-04-03"},
        {"dd.MM.yy", "31.4.26", "Invalid day entry."}, {"dd.MM.yy", "29.2.24", "2024-02-29"},
        {"yyyy-MM-dd", "2024-3-5", "2024-03-05"},
        {"yyyy-MM-dd", "3-5", "2026-03-05"}, // month before day, as in the format
        {"yyyy-MM-dd", "24-12-31", "2024-12-31"}, {"%d/%m/%Y", "5/3/24", "2024-03-05"},
        // A fourth field puts the month at place 3 of three numbers.
        {"d/yy/M/M", "1/2/3", "Invalid month entry."},
        // No separator: the whole text is one number.
        {"d", "12", "2026-03-12"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(parsed(*formatterOn(r.format), r.text), r.expected) << r.format << " " << r.text.toStdString();
    // Absent places are fine.
    EXPECT_FALSE(formatterOn("M/d/yy")->getObjectValue(nullptr, "", nullptr));
    EXPECT_TRUE(formatterOn("d")->getObjectValue(nullptr, "12", nullptr));
}

TEST(DateParsing, TodayIsReadOnEveryCallThatNeedsIt)
{
    WQDateFormatter f("M/d/yy");
    int reads = 0;
    WQDate today(2026, 4, 10);
    f.setTodayProvider([&] {
        ++reads;
        return std::optional<WQDate>(today);
    });
    EXPECT_EQ(parsed(f, "31"), "Invalid day entry."); // April has 30 days
    EXPECT_EQ(parsed(f, "30"), "2026-04-30");
    EXPECT_EQ(parsed(f, "1/2/2024"), "2024-01-02");
    EXPECT_EQ(reads, 2);
    today = WQDate(2131, 1, 20);
    EXPECT_EQ(parsed(f, "1/2/3"), "2103-01-02");
    EXPECT_EQ(parsed(f, "5"), "2131-01-05");

    // Without a clock, one or two numbers cannot be completed.
    f.setTodayProvider([] { return std::optional<WQDate>(); });
    EXPECT_EQ(parsed(f, "5"), "Invalid month entry.");
    EXPECT_EQ(parsed(f, "1/2/2024"), "2024-01-02");
}

TEST(DateParsing, YearsBeyondStorageAndTheApplicationsRange)
{
    const auto f = formatterOn("M/d/yy");
    // Four digits hold the years -999 to 9999; the others would be stored
    // whole and read back as another date.
    EXPECT_EQ(parsed(*f, "12/31/9999"), "9999-12-31");
    EXPECT_EQ(parsed(*f, "1/1/10000"), "Invalid year entry.");
    EXPECT_EQ(parsed(*f, "3/15/2431524"), "Invalid year entry.");
    EXPECT_EQ(WQDate(-999, 1, 2).optimizedStringXMLFormat(), "-999-01-02");
    EXPECT_EQ(parsed(*f, "1/2/-2999"), WQDate(-999, 1, 2).description()); // -2999 + 2000
    EXPECT_EQ(parsed(*f, "1/2/-3000"), "Invalid year entry.");
    // No step past them either: the key is refused.
    EXPECT_EQ(test::typeAtEnd(*formatterOn("M/d/yyyy"), "12/31/9999", "+"),
              (test::Keystroke{false, "12/31/9999", {10, 0}, ""}));

    // The application's range: the message names the limit that was passed.
    // (Both limits, and the lower one alone, are the date field's test's.)
    f->setDateRange(WQDate(2026, 1, 1), WQDate(2026, 12, 31));
    f->setMaximumDate(std::nullopt);
    EXPECT_EQ(parsed(*f, "1/1/27"), "2027-01-01");
    f->setDateRange(std::nullopt, WQDate(2026, 6, 30));
    EXPECT_EQ(parsed(*f, "7/1"), "The date must be on or before 6/30/26.");

    // Limits that cross move the other one, as QDateEdit's do.
    f->setMinimumDate(WQDate(2027, 1, 1));
    EXPECT_EQ(f->maximumDate(), WQDate(2027, 1, 1));
    f->setMaximumDate(WQDate(2026, 1, 1));
    EXPECT_EQ(f->minimumDate(), WQDate(2026, 1, 1));
    f->setDateRange(WQDate(2027, 6, 1), WQDate(2027, 1, 1));
    EXPECT_EQ(f->maximumDate(), WQDate(2027, 6, 1));
    // Lifting one limit leaves the other; a limit alone moves nothing.
    f->setMinimumDate(std::nullopt);
    f->setMaximumDate(WQDate(2020, 1, 1));
    EXPECT_EQ(f->minimumDate(), std::nullopt);
    f->setMinimumDate(WQDate(2019, 1, 1));
    EXPECT_EQ(f->maximumDate(), WQDate(2020, 1, 1));
    f->setMaximumDate(std::nullopt);
    EXPECT_EQ(f->minimumDate(), WQDate(2019, 1, 1));
}
