#include <WQGeneral/money/WQMoneyFormatter.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TestDelegate;
using wq::test::TypingField;

namespace {

class MoneyTyping : public ::testing::Test {
protected:
    void TearDown() override { WQMoneyFormatter::_wq_removed_delegate(&owner); }
    WQMoneyFormatter& with(const QVariantMap& dict, qint8 places = 2)
    {
        owner.dict = dict;
        WQMoneyFormatter::_wq_removed_delegate(&owner);
        current = WQMoneyFormatter::moneyFormatterForDelegate(&owner, places);
        return *current;
    }
    TestDelegate owner;
    std::shared_ptr<WQMoneyFormatter> current;
};

} // namespace

TEST_F(MoneyTyping, DigitsRegroupWithTheCaretAtTheEnd)
{
    TypingField field(with(test::dollarDict()));
    const QString expected[] = {u"$1"_s, u"$12"_s, u"$123"_s, u"$1,234"_s, u"$12,345"_s};
    const QString keys = u"12345"_s;
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(field.type(keys.mid(i, 1)), expected[i]);
        EXPECT_EQ(field.caret(), expected[i].size());
        EXPECT_TRUE(field.lastError.isNull());
    }
    // A digit typed in the middle keeps the caret behind it.
    field.select(2, 0); // $1|2,345
    EXPECT_EQ(field.type(u"9"_s), u"$192,345");
    EXPECT_EQ(field.caret(), 3);
    field.select(1, 0);
    EXPECT_EQ(field.type(u"7"_s), u"$7,192,345");
    EXPECT_EQ(field.caret(), 2);
}

TEST_F(MoneyTyping, MinusFlipsTheSignFromAnywhere)
{
    TypingField field(with(test::dollarDict()), u"$1,234"_s);
    EXPECT_EQ(field.type(u"-"_s), u"-$1,234");
    EXPECT_EQ(field.caret(), 7);
    EXPECT_EQ(field.type(u"-"_s), u"$1,234");
    field.select(0, 0);
    EXPECT_EQ(field.type(u"-"_s), u"-$1,234");
    EXPECT_EQ(field.caret(), 2);

    auto dict = test::dollarDict();
    dict[kWQCurrencyKey_NegativeCurrencyFormatString] = u"($#,##0.00)"_s;
    TypingField parens(with(dict), u"$12"_s);
    EXPECT_EQ(parens.type(u"-"_s), u"($12)");
    EXPECT_EQ(parens.type(u"5"_s), u"($125)");
}

TEST_F(MoneyTyping, DecimalSeparatorRules)
{
    TypingField field(with(test::dollarDict()), u"$12.34"_s);
    // A third decimal digit is swallowed without a message.
    EXPECT_EQ(field.type(u"5"_s), u"$12.34");
    EXPECT_TRUE(field.lastRefused);
    EXPECT_TRUE(field.lastError.isNull());
    // One more character is let through while the sign is being typed.
    EXPECT_EQ(field.type(u"-"_s), u"-$12.34");

    TypingField second(with(test::dollarDict()), u"$12.34"_s, 2);
    EXPECT_EQ(second.type(u"."_s), u"$12.34");
    EXPECT_EQ(second.lastError, uR"("." can't appear more than once here)"_s);
    // Right after the existing point the pair just collapses.
    TypingField doubled(with(test::dollarDict()), u"$12.34"_s, 4);
    EXPECT_EQ(doubled.type(u"."_s), u"$12.34");
    EXPECT_TRUE(doubled.lastError.isNull());
    EXPECT_EQ(doubled.caret(), 4);

    TypingField fresh(with(test::dollarDict()));
    EXPECT_EQ(fresh.type(u"0.5"_s), u"$.5");
    EXPECT_EQ(fresh.type(u"0"_s), u"$.50");
    EXPECT_EQ(fresh.type(u"7"_s), u"$.50");
    EXPECT_TRUE(fresh.lastRefused);
}

TEST_F(MoneyTyping, RefusalsZerosAndDeletion)
{
    TypingField field(with(test::dollarDict()), u"$12"_s);
    EXPECT_EQ(field.type(u"a"_s), u"$12");
    EXPECT_EQ(field.lastError, uR"("a" is not valid here)"_s);
    EXPECT_TRUE(field.lastRefused);
    EXPECT_EQ(field.type(u"("_s), u"$12");
    EXPECT_EQ(field.lastError, uR"("(" is not valid here)"_s);
    EXPECT_EQ(field.paste(u"3$"_s), u"$12");
    EXPECT_EQ(field.lastError, uR"("3$" is not valid here)"_s);

    TypingField zeros(with(test::dollarDict()));
    EXPECT_EQ(zeros.type(u"00"_s), u"$0");
    EXPECT_EQ(zeros.caret(), 2);
    EXPECT_EQ(zeros.type(u"7"_s), u"$7");
    EXPECT_EQ(zeros.caret(), 2);

    // Deleting across a group: the caret stays where the digit was.
    TypingField grouped(with(test::dollarDict()), u"$1,234"_s, 4); // $1,2|34
    EXPECT_EQ(grouped.backspace(), u"$134");
    EXPECT_EQ(grouped.caret(), 2);
    TypingField tail(with(test::dollarDict()), u"$12,345"_s);
    EXPECT_EQ(tail.backspace(), u"$1,234");
    EXPECT_EQ(tail.caret(), 6);
    // The last digit: the field editor is told where the caret goes; the
    // symbol comes back as the rewrite's decoration.
    TypingField last(with(test::dollarDict()), u"$1"_s);
    EXPECT_EQ(last.backspace(), u"$");
    ASSERT_TRUE(last.editorSelection.has_value());
    EXPECT_EQ(last.editorSelection->location, 0);
}

TEST_F(MoneyTyping, SymbolsWithBlanksAndOtherSeparators)
{
    // The symbol after the number with a blank: the caret stays before it.
    WQMoneyFormatter& euro = with(test::currencyDict(u" €"_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u"."_s, u","_s));
    TypingField field(euro);
    EXPECT_EQ(field.type(u"1234"_s), u"1.234 €");
    EXPECT_EQ(field.caret(), 5);
    EXPECT_EQ(field.type(u",5"_s), u"1.234,5 €");
    EXPECT_EQ(field.caret(), 7);
    EXPECT_EQ(field.type(u"-"_s), u"-1.234,5 €");
    // A partly deleted symbol is stripped and put back whole.
    TypingField broken(euro, u"12 "_s);
    EXPECT_EQ(broken.type(u"3"_s), u"123 €");

    TypingField swiss(with(test::currencyDict(u"CHF"_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u"'"_s, u"."_s)));
    EXPECT_EQ(swiss.type(u"12345"_s), u"CHF12'345");
    EXPECT_EQ(swiss.caret(), 9);
}

TEST(MoneyTypingLocales, SystemSettingsInFields)
{
    {
        test::ScopedLocale locale(u"de_DE"_s);
        WQMoneyFormatter f;
        TypingField field(f);
        EXPECT_EQ(field.type(u"1234,56"_s), u"1.234,56 €");
        EXPECT_EQ(field.type(u"."_s), u"1.234,56 €");
        EXPECT_EQ(field.type(u"7"_s), u"1.234,56 €");
    }
    {
        test::ScopedLocale locale(u"fr_FR"_s);
        WQMoneyFormatter f;
        TypingField field(f);
        EXPECT_EQ(field.type(u"1234567"_s), u"1\u202F234\u202F567 €");
    }
    {
        test::ScopedLocale locale(u"ja_JP"_s);
        WQMoneyFormatter f;
        TypingField field(f);
        EXPECT_EQ(field.type(u"1234"_s), u"￥1,234");
        // No places: a decimal digit has nowhere to go.
        EXPECT_EQ(field.type(u".5"_s), u"￥1,234.");
    }
}
