#include <WQGeneral/money/WQMoneyFormatter.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TestDelegate;

namespace {

// A shared formatter with custom settings; the delegate outlives it in the
// registry until the fixture posts its removal.
class MoneyDisplay : public ::testing::Test {
protected:
    void TearDown() override
    {
        WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_DelegateRemoved, &owner);
    }
    std::shared_ptr<WQMoneyFormatter> formatter(const QVariantMap& dict, qint8 places = 2)
    {
        owner.dict = dict;
        WQMoneyFormatter::_wq_removed_delegate(&owner);
        return WQMoneyFormatter::moneyFormatterForDelegate(&owner, places);
    }
    QString show(const std::shared_ptr<WQMoneyFormatter>& f, double v) { return *f->stringForObjectValue(v); }
    TestDelegate owner;
};

} // namespace

TEST_F(MoneyDisplay, WorkedTableRoundsOnTheFirstDroppedDigit)
{
    const auto f = formatter(test::dollarDict());
    EXPECT_EQ(show(f, 1234.5), u"$1,234.50");
    EXPECT_EQ(show(f, -1234.5), u"-$1,234.50");
    EXPECT_EQ(show(f, 0.375), u"$0.38");
    EXPECT_EQ(show(f, 0.625), u"$0.62");
    EXPECT_EQ(show(f, 999.999), u"$1,000.00");
    EXPECT_EQ(show(f, -0.004), u"$0.00");
    // The sign test looks at the whole part before the carry.
    EXPECT_EQ(show(f, -0.999), u"$1.00");
    EXPECT_EQ(show(f, -1.999), u"-$2.00");
    EXPECT_EQ(show(f, 0.0), u"$0.00");
    EXPECT_EQ(show(f, -0.0), u"$0.00");
    // Digits beyond the first dropped one are ignored.
    EXPECT_EQ(show(f, 0.12501), u"$0.12");
    EXPECT_EQ(show(f, 0.135), u"$0.14");
    EXPECT_EQ(show(f, 1000000), u"$1,000,000.00");
    EXPECT_EQ(show(f, 123), u"$123.00");
    EXPECT_EQ(show(f, 12), u"$12.00");
    EXPECT_EQ(*f->stringForObjectValue(qlonglong(-42)), u"-$42.00");
}

TEST_F(MoneyDisplay, ZeroPlacesNeverRoundAnExactHalfUp)
{
    const auto f = formatter(test::dollarDict(), 0);
    EXPECT_EQ(show(f, 2.5), u"$2");
    EXPECT_EQ(show(f, 3.5), u"$3");
    EXPECT_EQ(show(f, 3.6), u"$4");
    EXPECT_EQ(show(f, 1234), u"$1,234");
    const auto three = formatter(test::dollarDict(), 3);
    EXPECT_EQ(show(three, 1.2345), u"$1.234");
    EXPECT_EQ(show(three, 1.2347), u"$1.235");
    // Stored just below 1.2346: the dropped digit reads 5 and 234 is even.
    EXPECT_EQ(show(three, 1.2346), u"$1.234");
}

TEST_F(MoneyDisplay, NegativeFormatsAndSymbolPlacement)
{
    auto dict = test::dollarDict();
    dict[kWQCurrencyKey_NegativeCurrencyFormatString] = QStringLiteral("($#,##0.00)");
    EXPECT_EQ(show(formatter(dict), -12), u"($12.00)");
    dict[kWQCurrencyKey_NegativeCurrencyFormatString] = QStringLiteral("$#,##0.00");
    EXPECT_EQ(show(formatter(dict), -12), u"$12.00");
    // Custom symbols keep exactly what the dictionary says.
    const auto euro = formatter(test::currencyDict(u" €"_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u","_s, u"."_s));
    EXPECT_EQ(show(euro, 12), u"12.00 €");
    EXPECT_EQ(show(euro, -1234.5), u"-1,234.50 €");
    // No "," in the format: no grouping; short whole parts never get one.
    const auto plain = formatter(test::currencyDict(u"$"_s, u"$0.00"_s, u"-$0.00"_s, u","_s, u"."_s));
    EXPECT_EQ(show(plain, 1234.5), u"$1234.50");
    const auto swiss = formatter(test::currencyDict(u"CHF "_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u"'"_s, u"."_s));
    EXPECT_EQ(show(swiss, 1234567.891), u"CHF 1'234'567.89");
    EXPECT_EQ(show(swiss, -5), u"-CHF 5.00");
    // Longer separators shift later groups; no decimal separator groups the
    // units along with the whole part. Both are kept as they come out.
    const auto wide = formatter(test::currencyDict(u"$"_s, u"$#,##0.00"_s, u"-$#,##0.00"_s, u"::"_s, u"."_s));
    EXPECT_EQ(show(wide, 1234567), u"$1::23::4567.00");
    const auto bare = formatter(test::currencyDict(u"$"_s, u"$#,##0.00"_s, u"($#,##0.00)"_s, u","_s, u""_s));
    EXPECT_EQ(show(bare, -1234.5), u"($123,450)");
}

TEST_F(MoneyDisplay, NonNumbersAndOutOfRangeValues)
{
    const auto f = formatter(test::dollarDict());
    EXPECT_EQ(f->stringForObjectValue(u"not an amount"_s), u"not an amount");
    EXPECT_FALSE(f->stringForObjectValue(QVariant()).has_value());
    EXPECT_FALSE(f->stringForObjectValue(true).has_value());
    EXPECT_FALSE(f->stringForObjectValue(QVariantList{1}).has_value());
    // Values a 64-bit whole part cannot hold still give a text, not a crash.
    EXPECT_FALSE(show(f, std::numeric_limits<double>::quiet_NaN()).isEmpty());
    EXPECT_TRUE(show(f, 1e300).startsWith(u"$9,223,372,036,854,775,807"));
    EXPECT_TRUE(show(f, -HUGE_VAL).startsWith(u"-$9,223,372,036,854,775,80"));
}

TEST(MoneyDisplayLocales, SystemSettingsOfFourLocales)
{
    const auto show = [](double v) { return WQMoneyFormatter().stringForAmount(v); };
    {
        test::ScopedLocale locale(u"en_US"_s);
        EXPECT_EQ(show(-1234.5), u"-$1,234.50");
    }
    {
        test::ScopedLocale locale(u"de_DE"_s);
        EXPECT_EQ(show(1234.5), u"1.234,50 €");
        EXPECT_EQ(show(-1234.5), u"-1.234,50 €");
    }
    {
        test::ScopedLocale locale(u"fr_FR"_s);
        EXPECT_EQ(show(1234567.5), u"1\u202F234\u202F567,50 €");
    }
    {
        // No base pattern: the yen's own pattern has no decimals.
        test::ScopedLocale locale(u"ja_JP"_s);
        EXPECT_EQ(show(1234.5), u"￥1,234");
        EXPECT_EQ(show(1235.5), u"￥1,235");
        EXPECT_EQ(show(1235.7), u"￥1,236");
        TestDelegate owner;
        const auto twoPlaces = WQMoneyFormatter::moneyFormatterForDelegate(&owner, 2);
        EXPECT_EQ(twoPlaces->stringForAmount(1234.5), u"￥1,234.50");
        WQMoneyFormatter::_wq_removed_delegate(&owner);
    }
}
