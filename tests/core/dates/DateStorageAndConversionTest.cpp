// Dates in the fixed storage layouts and as moments in time, and the system
// date settings that give the patterns and the zone.

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "DateTesting.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <QDateTime>

#include <cstring>
#include <limits>
#include <memory>

using wq::WQDate;
using wq::WQSystemDateSettings;
using wq::test::ScopedTimeZone;

namespace {

std::optional<WQDate> tovana(const QString& text) { return WQDate::optimizedDateWithStringTovanaFormat(text); }
std::optional<WQDate> xml(const QString& text) { return WQDate::optimizedDateWithStringXMLFormat(text); }
std::optional<WQDate> cxml(const QString& text)
{
    return WQDate::optimizedDateWithCStringXMLFormat(text.toLatin1().constData());
}

} // namespace

TEST(DateStorage, WritesFixedLayouts)
{
    EXPECT_EQ(WQDate(2024, 3, 5).optimizedStringTovanaFormat(), "03/05/2024");
    EXPECT_EQ(WQDate(12345, 11, 25).optimizedStringTovanaFormat(), "11/25/12345");
    EXPECT_EQ(WQDate(2024, 3, 5).optimizedStringXMLFormat(), "2024-03-05");
    EXPECT_EQ(WQDate(33, 3, 5).optimizedStringXMLFormat(), "0033-03-05");
    EXPECT_EQ(WQDate(12345, 11, 25).optimizedStringXMLFormat(), "12345-11-25");
    EXPECT_EQ(WQDate(-5, 1, 2).optimizedStringXMLFormat(), "-005-01-02");
    EXPECT_EQ(WQDate(2024, 0, 0).optimizedStringXMLFormat(), "2024-00-00");
    for (const WQDate& date : {WQDate(2024, 3, 5), WQDate(33, 3, 5), WQDate(1, 1, 1), WQDate(9999, 12, 31)}) {
        EXPECT_EQ(xml(date.optimizedStringXMLFormat()), date);
        EXPECT_EQ(cxml(date.optimizedStringXMLFormat()), date);
        EXPECT_EQ(tovana(date.optimizedStringTovanaFormat()), date);
    }
}

TEST(DateStorage, ReadersAtTheirBoundaries)
{
    using Reader = std::optional<WQDate> (*)(const QString&);
    const struct { Reader read; QString text; std::optional<WQDate> expected; } rows[] = {
        {tovana, "12/31/1999", WQDate(1999, 12, 31)}, {tovana, "12-31-1999", WQDate(1999, 12, 31)},
        {tovana, "11/25/12345", WQDate(12345, 11, 25)}, {tovana, "2/3/2024", std::nullopt}, {tovana, "", std::nullopt},
        // Numbers read like the C library: spaces, signs, stray text.
        {tovana, " 3/ 5/ 2024 and more", WQDate(2024, 3, 5)}, {tovana, "xx/yy/zzzz", WQDate(0, 0, 0)},
        // Overflowing fields fold forward; month and day wrap at 8 bits first.
        {tovana, "13/01/2024", WQDate(2025, 1, 1)}, {tovana, "-1/01/2024", WQDate(2024, 255, 1)},
        // The year is 32 bits, read as atoi reads it.
        {tovana, "01/01/2147483647", WQDate(2147483647, 1, 1)}, {tovana, "01/01/-2147483648", WQDate(-2147483648LL, 1, 1)},
        {tovana, "01/01/4294967297", WQDate(1, 1, 1)}, {tovana, "01/01/99999999999999999999999", WQDate(-1, 1, 1)},
        // Non-ASCII digits are not digits.
        {tovana, QString::fromUtf8("０３/05/2024"), WQDate(2024, 0, 5)},
        {xml, "0033-03-05", WQDate(33, 3, 5)}, {xml, "2024-03-05T10:00:00", WQDate(2024, 3, 5)},
        {xml, "2024-13-05", WQDate(2025, 1, 5)}, {xml, "2024/03/05", WQDate(2024, 3, 5)}, {xml, "2024-03-5", std::nullopt},
        // Fixed positions: a five-digit year shifts every field ("-1" is month 255).
        {xml, "12345-11-25", WQDate(1234, 255, 254)},
        {cxml, "2024-03-05T10:00:00Z", WQDate(2024, 3, 5)}, {cxml, "", std::nullopt},
        // Only the first byte is checked: a short string reads as far as it goes.
        {cxml, "2024", WQDate(2024, 0, 0)}, {cxml, "2024-03", WQDate(2024, 3, 0)}, {cxml, "x", WQDate(0, 0, 0)},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.read(row.text), row.expected) << row.text.toStdString();
    EXPECT_FALSE(WQDate::optimizedDateWithCStringXMLFormat(nullptr));
    // Reads never pass the terminator: a 1-byte allocation is enough.
    auto tiny = std::make_unique<char[]>(2);
    std::memcpy(tiny.get(), "7", 2);
    EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat(tiny.get()), WQDate(7, 0, 0));
}

TEST(DateConversion, MidnightKeepsTheDateInEveryZoneAndInADaylightSavingGap)
{
    const WQDate dates[] = {WQDate(2024, 3, 5), WQDate(2018, 11, 4), WQDate(2024, 3, 31), WQDate(2024, 10, 27),
                            WQDate(1970, 1, 1), WQDate(1, 1, 1), WQDate(9999, 12, 31), WQDate(2024, 2, 29)};
    for (const char* zone : {"America/New_York", "America/Sao_Paulo", "Europe/Berlin", "Pacific/Kiritimati",
                             "Pacific/Pago_Pago", "Asia/Kolkata", "UTC"}) {
        ScopedTimeZone scoped(zone);
        for (const WQDate& date : dates) {
            SCOPED_TRACE(zone + (" " + date.debugDescription().toStdString()));
            const QDateTime moment = date.nsDate();
            ASSERT_TRUE(moment.isValid());
            EXPECT_EQ(WQDate::dateWithNSDate(moment), date);
            EXPECT_EQ(moment.toLocalTime().date().day(), int(date.dayOfMonth()));
        }
    }
    // Sao Paulo skipped from 00:00 to 01:00 on 2018-11-04.
    ScopedTimeZone scoped("America/Sao_Paulo");
    const QDateTime moment = WQDate(2018, 11, 4).nsDate(), dayBefore = WQDate(2018, 11, 3).nsDate();
    ASSERT_TRUE(moment.isValid());
    EXPECT_EQ(moment.toLocalTime().time(), QTime(1, 0));
    EXPECT_EQ(dayBefore.toLocalTime().time(), QTime(0, 0));
    // 00:00 at -03:00 and 01:00 at -02:00 are the same instant; the short day follows.
    EXPECT_EQ(moment.toSecsSinceEpoch() - dayBefore.toSecsSinceEpoch(), 24 * 3600);
    EXPECT_EQ(WQDate(2018, 11, 5).nsDate().toSecsSinceEpoch() - moment.toSecsSinceEpoch(), 23 * 3600);
}

TEST(DateConversion, MomentsGiveTheirLocalDate)
{
    ScopedTimeZone scoped("America/New_York");
    // 03:30 UTC on March 5 is still March 4 in New York.
    EXPECT_EQ(WQDate::dateWithNSDate(QDateTime(QDate(2024, 3, 5), QTime(3, 30), Qt::UTC)), WQDate(2024, 3, 4));
    EXPECT_EQ(WQDate::dateWithNSDate(QDateTime(QDate(2024, 3, 5), QTime(23, 59, 59), Qt::LocalTime)), WQDate(2024, 3, 5));
    // Before year 1: QDate's -1 is our year 0.
    EXPECT_EQ(WQDate::dateWithNSDate(QDateTime(QDate(-1, 6, 1), QTime(12, 0), Qt::LocalTime)), WQDate(0, 6, 1));
    EXPECT_EQ(WQDate(0, 6, 1).nsDate().date(), QDate(-1, 6, 1));
    // Day 0 and month 0 are the days before.
    EXPECT_EQ(WQDate(2024, 3, 0).nsDate().date(), QDate(2024, 2, 29));
    EXPECT_EQ(WQDate(2024, 0, 0).nsDate().date(), QDate(2023, 12, 31));
    EXPECT_FALSE(WQDate(std::numeric_limits<qint64>::max(), 1, 1).nsDate().isValid());
    EXPECT_EQ(wq::test::messageOf<wq::NSInternalInconsistencyException>([] { (void)WQDate::dateWithNSDate({}); }),
              "WQDate -dateWithNSDate: got nil for the NSCalendarDate!");
}

TEST(DateConversion, QVariantsConvertToAndFromQDateAndText)
{
    // Registered as the library starts: nothing was called to set it up.
    EXPECT_EQ(QMetaType::fromName("wq::WQDate"), QMetaType::fromType<WQDate>());

    const QVariant date = QVariant::fromValue(WQDate(2024, 3, 5));
    EXPECT_TRUE(date.canConvert<QDate>());
    EXPECT_EQ(date.toDate(), QDate(2024, 3, 5));
    EXPECT_EQ(date.toString(), u"2024-03-05");
    EXPECT_EQ(QVariant(QDate(2024, 3, 5)).value<WQDate>(), WQDate(2024, 3, 5));
    EXPECT_EQ(QVariant(QStringLiteral("2024-03-05")).value<WQDate>(), WQDate(2024, 3, 5));
    EXPECT_EQ(date, QVariant::fromValue(WQDate(2024, 3, 5)));

    // QDate has no year 0: ours is its year -1.
    EXPECT_EQ(WQDate(0, 6, 1).toQDate(), QDate(-1, 6, 1));
    EXPECT_EQ(WQDate::fromQDate(QDate(-1, 6, 1)), WQDate(0, 6, 1));

    // The no-date value, and days that are not whole dates, convert to nothing.
    for (const WQDate& none : {WQDate(), WQDate(2024, 3, 0)}) {
        QVariant converted = QVariant::fromValue(none);
        EXPECT_FALSE(converted.toDate().isValid());
        EXPECT_TRUE(converted.toString().isEmpty());
    }
    EXPECT_EQ(WQDate::fromQDate(QDate()), WQDate());
    QVariant text(QStringLiteral("March 5"));
    EXPECT_FALSE(text.convert(QMetaType::fromType<WQDate>()));
}

TEST(SystemDateSettings, PatternsFollowTheTimeLocale)
{
    // The short pattern as a date field shows and reads it: numbers in the
    // locale's order and one separator a user can type.
    const std::pair<const char*, const char*> rows[] = {
        {"en_US", "M/d/yy"},  {"de_DE", "dd.MM.yy"}, {"ko_KR", "yy.M.d"},  {"hu_HU", "y.MM.dd"},
        {"bg_BG", "d.MM.yy"}, {"ar_SA", "d/M/y"},    {"sv_SE", "y/MM/dd"},
    };
    for (const auto& [name, format] : rows) {
        wq::test::ScopedLocale locale(name);
        EXPECT_EQ(WQSystemDateSettings::shortDateFormat(), format) << name;
    }
    wq::test::ScopedLocale locale("en_US");
    EXPECT_EQ(WQSystemDateSettings::longDateFormat(), "EEEE, MMMM d, y");
}

TEST(SystemDateSettings, LocaleDictionaryIsSharedUntilTheLocaleChanges)
{
    wq::test::ScopedLocale locale("en_US");
    const QVariantMap first = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_TRUE(first.isSharedWith(WQSystemDateSettings::systemDefinedDateInformation()));
    EXPECT_EQ(first.size(), 5);
    const auto names = [&first](const QString& key) { return first.value(key).toStringList(); };
    EXPECT_EQ(names(wq::WQDateLocaleKey_TimeDateFormatString), names(wq::WQDateLocaleKey_MonthNameArray));
    ASSERT_EQ(names(wq::WQDateLocaleKey_MonthNameArray).size(), 12);
    EXPECT_EQ(names(wq::WQDateLocaleKey_MonthNameArray).front(), "January");
    EXPECT_EQ(names(wq::WQDateLocaleKey_ShortMonthNameArray).at(2), "Mar");
    ASSERT_EQ(names(wq::WQDateLocaleKey_WeekDayNameArray).size(), 7);
    EXPECT_EQ(names(wq::WQDateLocaleKey_WeekDayNameArray).front(), "Sunday");
    EXPECT_EQ(names(wq::WQDateLocaleKey_ShortWeekDayNameArray).at(6), "Sat");

    // The system's locale-change notification drops the cached dictionary.
    wq::WQNotificationCenter::distributedCenter().postNotificationName(wq::kWQNotif_CurrentLocaleDidChange);
    const QVariantMap rebuilt = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_FALSE(rebuilt.isSharedWith(first));
    EXPECT_EQ(rebuilt, first);

    wq::WQRegionalSettings::setLocale(wq::WQRegionalSettings::Category::Time, "fr_FR");
    const QVariantMap french = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_EQ(french.value(wq::WQDateLocaleKey_MonthNameArray).toStringList().front(), "janvier");
}

TEST(SystemDateSettings, FixedFormatsInLocalTime)
{
    ScopedTimeZone zone("Europe/Berlin");
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(1709640000); // 2024-03-05 12:00 UTC
    const QString format = QStringLiteral("%Y-%m-%d %H:%M:%S");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(format, moment), "2024-03-05 13:00:00");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(format, moment.addMSecs(999)), "2024-03-05 13:00:00");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(QString(300, u'x'), moment), "");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(format, QDateTime()), "");

    EXPECT_EQ(WQSystemDateSettings::nsdateWithFixedFormat(format, "2024-03-05 13:00:00"), moment);
    EXPECT_FALSE(WQSystemDateSettings::nsdateWithFixedFormat("%Y-%m-%d", "March"));
    // Parsed as standard time: a summer time of day comes out an hour later.
    const auto summer = WQSystemDateSettings::nsdateWithFixedFormat("%Y-%m-%d %H:%M", "2024-07-01 12:00");
    ASSERT_TRUE(summer);
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat("%H:%M", *summer), "13:00");
}

TEST(SystemDateSettings, ShortDateTime)
{
    wq::test::ScopedLocale locale("en_US");
    ScopedTimeZone zone("America/New_York");
    const QString text = WQSystemDateSettings::shortDateTimeStringWithNSDate(QDateTime::fromSecsSinceEpoch(1709640000));
    EXPECT_TRUE(text.startsWith("3/5/24, 7:00") && text.endsWith("AM")) << qPrintable(text);
    EXPECT_FALSE(WQSystemDateSettings::shortDateTimeStringWithNSDate().isEmpty()) << "nothing given means now";
    EXPECT_FALSE(WQSystemDateSettings::shortDateTimeStringWithNSDate(QDateTime()).isEmpty()) << "so does an invalid one";
}
