#include <WQGeneral/numbers/WQDigitSet.h>
#include <WQGeneral/numbers/WQNumberSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;

TEST(NumberSettings, SeparatorsAndCurrencyPerLocale)
{
    const struct {
        QString locale, decimal, grouping, symbol, currencyGrouping, positive, negative;
    } rows[] = {
        {u"en_US"_s, u"."_s, u","_s, u"$"_s, u","_s, u"$#,##0.00"_s, u"-$#,##0.00"_s},
        {u"de_DE"_s, u","_s, u"."_s, u"€"_s, u"."_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s},
        {u"fr_FR"_s, u","_s, u"\u202F"_s, u"€"_s, u"\u202F"_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s},
        {u"ja_JP"_s, u"."_s, u","_s, u"￥"_s, u","_s, u"$#,##0"_s, u"-$#,##0"_s},
        {u"nl_NL"_s, u","_s, u"."_s, u"€"_s, u"."_s, u"$ #,##0.00"_s, u"$ -#,##0.00"_s},
    };
    for (const auto& row : rows) {
        test::ScopedLocale locale(row.locale);
        SCOPED_TRACE(row.locale.toStdString());
        EXPECT_EQ(WQNumberSettings::decimalSeparator(), row.decimal);
        EXPECT_EQ(WQNumberSettings::groupingSeparator(), row.grouping);
        EXPECT_EQ(WQNumberSettings::currencySymbol(), row.symbol);
        EXPECT_EQ(WQNumberSettings::currencyGroupingSeparator(), row.currencyGrouping);
        EXPECT_EQ(WQNumberSettings::positiveCurrencyFormat(), row.positive);
        EXPECT_EQ(WQNumberSettings::negativeCurrencyFormat(), row.negative);
    }
    // Categories are read separately: numbers from one locale, money from another.
    test::ScopedLocale all(u"en_US"_s);
    WQRegionalSettings::setLocale(WQRegionalSettings::Category::Monetary, u"de_DE.UTF-8"_s);
    EXPECT_EQ(WQNumberSettings::decimalSeparator(), u".");
    EXPECT_EQ(WQNumberSettings::currencySymbol(), u"€");
}

TEST(DigitSet, DigitsExtrasAndInversion)
{
    const WQDigitSet set = WQDigitSet::decimalDigitsPlus({u","_s, u"\u202F"_s});
    EXPECT_TRUE(set.contains(U'7'));
    EXPECT_TRUE(set.contains(U'\u0663')); // Arabic-Indic three: a decimal digit too
    EXPECT_TRUE(set.contains(U'\U0001D7D9')); // mathematical double-struck one
    EXPECT_TRUE(set.contains(U'\u202F'));
    EXPECT_FALSE(set.contains(U'.'));
    EXPECT_FALSE(set.contains(U'\u00BD')); // ½ is a number, not a digit
    const WQDigitSet inverted = set.invertedSet();
    EXPECT_EQ(inverted.indexIn(u"12,3a"_s), 4);
    EXPECT_EQ(inverted.indexIn(u"\U0001D7D9x"_s), 2);
    EXPECT_EQ(inverted.indexIn(u""_s), -1);
    EXPECT_FALSE(inverted.intersects(u"1\u202F234"_s));
    const WQDigitSet symbol = WQDigitSet::characters({u"kr."_s});
    EXPECT_TRUE(symbol.contains(U'.'));
    EXPECT_FALSE(symbol.contains(U'1'));
}
