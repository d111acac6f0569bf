// Keys typed into a money field, in the standard mode and the ATM mode.

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

using namespace wq;
using namespace Qt::StringLiterals;
using test::checkTyping;
using test::notValid;
using test::TypingField;

namespace {

class MoneyTyping : public test::MoneyTest {};

class MoneyATM : public test::MoneyTest {
protected:
    void SetUp() override { owner.setUserInputLikeATM(true); }
};

// The text after selecting [location, location + length) of start and pressing keys.
QString afterSelection(WQFormatter& f, const QString& start, qsizetype location, qsizetype length, const QString& keys)
{
    TypingField field(f, start);
    field.select(location, length);
    return field.type(keys);
}

} // namespace

TEST_F(MoneyTyping, WorkedTableOfTheDollar)
{
    const QString twice = uR"("." can't appear more than once here)"_s;
    checkTyping(with(test::dollarDict()), {
        // Digits regroup; one typed in the middle keeps the caret behind it.
        {u""_s, -1, u"1"_s, u"$1"_s, 2},              {u""_s, -1, u"123"_s, u"$123"_s, 4},
        {u""_s, -1, u"1234"_s, u"$1,234"_s, 6},       {u""_s, -1, u"12345"_s, u"$12,345"_s, 7},
        {u"$12,345"_s, 2, u"9"_s, u"$192,345"_s, 3},  {u"$192,345"_s, 1, u"7"_s, u"$7,192,345"_s, 2},
        // Minus flips the sign from anywhere.
        {u"$1,234"_s, -1, u"-"_s, u"-$1,234"_s, 7},   {u"$1,234"_s, -1, u"--"_s, u"$1,234"_s},
        {u"$1,234"_s, 0, u"-"_s, u"-$1,234"_s, 2},
        // A third decimal digit is swallowed without a message, but the sign
        // may still be typed after the second.
        {u"$12.34"_s, -1, u"5"_s, u"$12.34"_s, 6, {}, true}, {u"$12.34"_s, -1, u"-"_s, u"-$12.34"_s},
        {u"$12.34"_s, 2, u"."_s, u"$12.34"_s, 2, twice, true},
        // Right after the existing point the pair just collapses.
        {u"$12.34"_s, 4, u"."_s, u"$12.34"_s, 4},
        {u""_s, -1, u"0.5"_s, u"$.5"_s},              {u""_s, -1, u"0.50"_s, u"$.50"_s},
        {u""_s, -1, u"0.507"_s, u"$.50"_s, -1, {}, true},
        {u"$12"_s, -1, u"a"_s, u"$12"_s, 3, notValid(u"a"_s), true},
        {u"$12"_s, -1, u"("_s, u"$12"_s, 3, notValid(u"("_s), true},
        {u""_s, -1, u"00"_s, u"$0"_s, 2},             {u""_s, -1, u"007"_s, u"$7"_s, 2},
        // Deleting across a group: the caret stays where the digit was.
        {u"$1,234"_s, 4, u"\b"_s, u"$134"_s, 2},      {u"$12,345"_s, -1, u"\b"_s, u"$1,234"_s, 6},
    });
    TypingField paste(*current, u"$12"_s);
    EXPECT_EQ(paste.paste(u"3$"_s), u"$12");
    EXPECT_EQ(paste.lastError, notValid(u"3$"_s));
    // The last digit: the field editor is told where the caret goes; the
    // symbol comes back as the rewrite's decoration.
    TypingField last(*current, u"$1"_s);
    EXPECT_EQ(last.backspace(), u"$");
    ASSERT_TRUE(last.editorSelection.has_value());
    EXPECT_EQ(last.editorSelection->location, 0);

    checkTyping(with(test::dollarDict(u"($#,##0.00)"_s)),
                {{u"$12"_s, -1, u"-"_s, u"($12)"_s}, {u"$12"_s, -1, u"-5"_s, u"($125)"_s}});
}

TEST_F(MoneyTyping, SymbolsWithBlanksAndOtherSeparators)
{
    // The symbol after the number with a blank: the caret stays before it;
    // a partly deleted symbol is stripped and put back whole.
    checkTyping(with(test::euroDict()), {
        {u""_s, -1, u"1234"_s, u"1.234 €"_s, 5},      {u""_s, -1, u"1234,5"_s, u"1.234,5 €"_s, 7},
        {u""_s, -1, u"1234,5-"_s, u"-1.234,5 €"_s},   {u"12 "_s, -1, u"3"_s, u"123 €"_s},
    });
    checkTyping(with(test::currencyDict(u"CHF"_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u"'"_s, u"."_s)),
                {{u""_s, -1, u"12345"_s, u"CHF12'345"_s, 9}});
}

TEST(MoneyTypingLocales, SystemSettingsInFields)
{
    const struct { QString locale; QString keys; QString text; } rows[] = {
        {u"de_DE"_s, u"1234,56"_s, u"1.234,56 €"_s},  {u"de_DE"_s, u"1234,56.7"_s, u"1.234,56 €"_s},
        {u"fr_FR"_s, u"1234567"_s, u"1\u202F234\u202F567 €"_s}, {u"ja_JP"_s, u"1234"_s, u"￥1,234"_s},
        // No places: a decimal digit has nowhere to go.
        {u"ja_JP"_s, u"1234.5"_s, u"￥1,234."_s},
    };
    for (const auto& row : rows) {
        test::ScopedLocale locale(row.locale);
        WQMoneyFormatter f;
        EXPECT_EQ(TypingField(f).type(row.keys), row.text) << row.locale.toStdString();
    }
}

TEST_F(MoneyATM, DigitsEnterFromTheRight)
{
    checkTyping(with(test::dollarDict()), {
        {u""_s, -1, u"1"_s, u"$0.01"_s},              {u""_s, -1, u"12"_s, u"$0.12"_s},
        {u""_s, -1, u"123"_s, u"$1.23"_s},            {u""_s, -1, u"1234"_s, u"$12.34"_s, 6},
        {u"$12.34"_s, -1, u"\b"_s, u"$1.23"_s},       {u"$12.34"_s, -1, u"\b\b\b\b"_s, u"$0.00"_s, 5},
        // Where the caret stands does not matter: digits go to the right.
        {u"$0.00"_s, 1, u"9"_s, u"$0.09"_s},
        {u"$12.34"_s, -1, u"-"_s, u"-$12.34"_s},      {u"$12.34"_s, -1, u"-5"_s, u"-$123.45"_s},
        {u"$12.34"_s, -1, u"-5\b"_s, u"-$12.34"_s},
        {u"$12.34"_s, -1, u"."_s, u"$12.34"_s, -1, notValid(u"."_s), true},
        {u"$12.34"_s, -1, u","_s, u"$12.34"_s, -1, notValid(u","_s), true},
        {u"$12.34"_s, -1, u"x"_s, u"$12.34"_s, -1, notValid(u"x"_s), true},
    });
    // Deleting a selection still drops exactly the last digit; typing over
    // everything keeps the sign; cutting everything leaves zero.
    EXPECT_EQ(afterSelection(*current, u"$123.45"_s, 1, 3, u"\b"_s), u"$12.34");
    EXPECT_EQ(afterSelection(*current, u"$12.34"_s, 0, 6, u"7"_s), u"$0.07");
    EXPECT_EQ(afterSelection(*current, u"-$12.34"_s, 0, 7, u"7"_s), u"-$0.07");
    TypingField cut(*current, u"$5.00"_s);
    cut.selectAll();
    EXPECT_EQ(cut.paste(QString()), u"$0.00");
}

TEST_F(MoneyATM, PastesAreParsedWhole)
{
    TypingField paste(with(test::dollarDict()));
    EXPECT_EQ(paste.paste(u"1,234.5"_s), u"$1,234.50");
    EXPECT_EQ(paste.caret(), 9);
    // A paste that is not one amount stays as proposed, without a message.
    TypingField bad(*current);
    EXPECT_EQ(bad.paste(u"1.2.3"_s), u"1.2.3");
    EXPECT_TRUE(bad.lastError.isNull());
    EXPECT_FALSE(bad.lastRefused);
}

TEST_F(MoneyATM, ZeroPlacesOtherSettingsAndModeSwitch)
{
    checkTyping(with(test::dollarDict(), 0), {{u""_s, -1, u"12"_s, u"$12"_s}, {u""_s, -1, u"12\b"_s, u"$1"_s}});
    checkTyping(with(test::euroDict()), {
        {u""_s, -1, u"123456"_s, u"1.234,56 €"_s, 10},
        {u""_s, -1, u"123456,"_s, u"1.234,56 €"_s, 10, notValid(u","_s), true},
    });
    // The owner may switch modes at any time.
    owner.setUserInputLikeATM(false);
    checkTyping(*current, {{u"1.234,56 €"_s, 8, u"7"_s, u"1.234,56 €"_s, 8, {}, true}});
}
