#include <WQGeneral/numbers/WQDigitSet.h>
#include <WQGeneral/numbers/WQNumberSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;

TEST(NumberSettings, SeparatorsAndCurrencyPerLocale)
{
    // Locale, then decimal, grouping, symbol, currency grouping, positive and negative format.
    const QStringList rows[] = {
        {u"en_US"_s, u"."_s, u","_s, u"$"_s, u","_s, u"$#,##0.00"_s, u"-$#,##0.00"_s},
        {u"de_DE"_s, u","_s, u"."_s, u"€"_s, u"."_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s},
        {u"fr_FR"_s, u","_s, u"\u202F"_s, u"€"_s, u"\u202F"_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s},
        {u"ja_JP"_s, u"."_s, u","_s, u"￥"_s, u","_s, u"$#,##0"_s, u"-$#,##0"_s},
        {u"nl_NL"_s, u","_s, u"."_s, u"€"_s, u"."_s, u"$ #,##0.00"_s, u"$ -#,##0.00"_s},
        // The separators of the ASCII digits the fields use; no direction marks.
        {u"ar_SA"_s, u"."_s, u","_s, u"ر.س.\u200F"_s, u","_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s},
    };
    for (const QStringList& row : rows) {
        test::ScopedLocale locale(row.front());
        const QStringList found{row.front(), WQNumberSettings::decimalSeparator(), WQNumberSettings::groupingSeparator(),
                                WQNumberSettings::currencySymbol(), WQNumberSettings::currencyGroupingSeparator(),
                                WQNumberSettings::positiveCurrencyFormat(), WQNumberSettings::negativeCurrencyFormat()};
        EXPECT_EQ(found.join(u'|').toStdString(), row.join(u'|').toStdString());
    }
    // Numbers from one locale, money from another: the symbol and patterns
    // are the money's, every separator the numbers'.
    test::ScopedLocale all(u"en_US"_s);
    WQRegionalSettings::setLocale(WQRegionalSettings::Category::Monetary, u"de_DE.UTF-8"_s);
    EXPECT_EQ(WQNumberSettings::decimalSeparator(), u".");
    EXPECT_EQ(WQNumberSettings::currencyGroupingSeparator(), u",");
    EXPECT_EQ(WQNumberSettings::currencySymbol(), u"€");
    EXPECT_EQ(WQNumberSettings::positiveCurrencyFormat(), u"#,##0.00 $");
}

TEST(DigitSet, DigitsExtrasAndInversion)
{
    const WQDigitSet set = WQDigitSet::decimalDigitsPlus({u","_s, u"\u202F"_s});
    // Arabic-Indic three and the double-struck one are decimal digits too;
    // ½ is a number, not a digit.
    for (char32_t c : {U'7', U'\u0663', U'\U0001D7D9', U'\u202F'})
        EXPECT_TRUE(set.contains(c)) << unsigned(c);
    for (char32_t c : {U'.', U'\u00BD'})
        EXPECT_FALSE(set.contains(c)) << unsigned(c);
    const WQDigitSet inverted = set.invertedSet();
    EXPECT_EQ(inverted.indexIn(u"12,3a"_s), 4);
    EXPECT_EQ(inverted.indexIn(u"\U0001D7D9x"_s), 2);
    EXPECT_EQ(inverted.indexIn(u""_s), -1);
    EXPECT_FALSE(inverted.intersects(u"1\u202F234"_s));
    const WQDigitSet symbol = WQDigitSet::characters({u"kr."_s});
    EXPECT_TRUE(symbol.contains(U'.'));
    EXPECT_FALSE(symbol.contains(U'1'));
}
