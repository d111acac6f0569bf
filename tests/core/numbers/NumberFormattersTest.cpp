// Whole numbers and decimals shown, typed and read, and the separators and
// currency patterns each locale gives them.

#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQDigitSet.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include "TypingField.h"
#include "WQTestSupport.h"

using namespace wq;
using namespace Qt::StringLiterals;
using test::notValid;

TEST(DecimalFormatter, DisplayAndReading)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQDecimalFormatter f;
    const struct { QVariant value; const char16_t* text; } rows[] = {
        {3, u"3"}, {-7.0, u"-7"}, {2.5, u"2.50"}, {QString(), u""},
        // The C rounding of the stored double, which is just below 1.005.
        {1.005, u"1.00"}, {1.015625, u"1.02"},
        // Beyond 32 bits, always two decimals.
        {3e9, u"3000000000.00"}, {2147483647.0, u"2147483647"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(f.stringForObjectValue(row.value), row.text) << row.value.toString().toStdString();
    f.setDecimalSeparator(u","_s);
    EXPECT_EQ(f.stringForObjectValue(2.5), u"2,50");
    f.setDecimalSeparator(QString());
    EXPECT_EQ(f.decimalSeparator(), u".");

    // Reading flips the sign for each minus and drops foreign characters.
    const struct { QString text; double value; } read[] = {
        {u"--1.5"_s, 1.5}, {u"-1.5"_s, -1.5}, {u"1.5-"_s, -1.5}, {u"a1.5b"_s, 1.5}, {u"1,234.5"_s, 1234.5}, {u"42"_s, 42},
    };
    for (const auto& row : read) {
        const test::Reading reading = test::readWith(f, row.text, u"stale"_s);
        EXPECT_TRUE(reading.ok && reading.error.isNull()) << row.text.toStdString();
        EXPECT_DOUBLE_EQ(reading.value.toDouble(), row.value) << row.text.toStdString();
    }
    const test::Reading twoPoints = test::readWith(f, u"1.2.3"_s);
    EXPECT_TRUE(!twoPoints.ok && !twoPoints.error.isEmpty());

    test::ScopedLocale german(u"de_DE"_s);
    EXPECT_EQ(WQDecimalFormatter().stringForObjectValue(-0.25), u"-0,25");
    EXPECT_DOUBLE_EQ(test::readWith(WQDecimalFormatter(), u"-2,75 %"_s).value.toDouble(), -2.75);
}

TEST(DecimalFormatter, TypingOnlyFilters)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQDecimalFormatter f;
    test::checkTyping(f, {
        {u""_s, -1, u"12.5"_s, u"12.5"_s, 4},
        {u"12.5"_s, -1, u"-"_s, u"12.5"_s, 4, notValid(u"-"_s), true},
        {u"12.5"_s, -1, u","_s, u"12.5"_s, 4, notValid(u","_s), true},
        {u"12.5"_s, -1, u"x"_s, u"12.5"_s, 4, notValid(u"x"_s), true},
        // A second point is not this formatter's business; parsing refuses it.
        {u"12.5"_s, -1, u"."_s, u"12.5."_s},          {u"12.5."_s, -1, u"\b"_s, u"12.5"_s},
    });
    test::TypingField field(f, u"12.5"_s);
    field.selectAll();
    EXPECT_EQ(field.backspace(), u"");
    ASSERT_TRUE(field.editorSelection.has_value());
    EXPECT_EQ(field.editorSelection->location, 0);
}

TEST(PositiveIntegerFormatter, TypingRegroupsRefusesAndKeepsTheCaret)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQPositiveIntegerFormatter f;
    test::checkTyping(f, {
        {u""_s, -1, u"1"_s, u"1"_s, 1},               {u""_s, -1, u"123"_s, u"123"_s, 3},
        {u""_s, -1, u"1234"_s, u"1,234"_s, 5},        {u""_s, -1, u"12345"_s, u"12,345"_s, 6},
        {u"12,345"_s, -1, u"-"_s, u"12,345"_s, 6, notValid(u"-"_s), true},
        {u"12,345"_s, -1, u"."_s, u"12,345"_s, 6, notValid(u"."_s), true},
        {u"12,345"_s, -1, u"a"_s, u"12,345"_s, 6, notValid(u"a"_s), true},
        // A digit in the middle, or a deletion: the caret keeps its place
        // among the digits.
        {u"12,345"_s, 1, u"9"_s, u"192,345"_s, 2},    {u"1,234"_s, 3, u"\b"_s, u"134"_s, 1},
        {u"12,345"_s, -1, u"\b"_s, u"1,234"_s, 5},
        // Leading zeros go; only those before the caret move it, and a
        // separator inserted at or before the caret moves it.
        {u""_s, -1, u"00"_s, u"0"_s, 1},              {u""_s, -1, u"005"_s, u"5"_s, 1},
        {u"0007"_s, 1, u"5"_s, u"5,007"_s, 2},        {u"008"_s, 0, u"0"_s, u"8"_s, 0},
    });
    test::TypingField last(f, u"7"_s);
    EXPECT_EQ(last.backspace(), u"");
    ASSERT_TRUE(last.editorSelection.has_value());
    EXPECT_EQ(last.editorSelection->location, 0);
}

TEST(PositiveIntegerFormatter, LocaleGroupingDisplayAndParse)
{
    test::ScopedLocale locale(u"de_DE"_s);
    WQPositiveIntegerFormatter f;
    test::checkTyping(f, {
        {u""_s, -1, u"1234567"_s, u"1.234.567"_s},
        {u""_s, -1, u"1234567,"_s, u"1.234.567"_s, 9, notValid(u","_s), true},
    });
    EXPECT_EQ(f.stringForObjectValue(1234567), u"1.234.567");
    EXPECT_EQ(f.stringForObjectValue(QString()), u"");
    EXPECT_FALSE(f.stringForObjectValue(u"12"_s).has_value());
    EXPECT_EQ(test::readWith(f, u"1.234"_s).value.toDouble(), 1234);
    const test::Reading letter = test::readWith(f, u"12x"_s);
    EXPECT_TRUE(!letter.ok && !letter.error.isEmpty());
}

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
