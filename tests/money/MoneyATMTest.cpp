#include <WQGeneral/money/WQMoneyFormatter.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TestDelegate;
using wq::test::TypingField;

namespace {

class MoneyATM : public ::testing::Test {
protected:
    void SetUp() override { owner.atm = true; }
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

TEST_F(MoneyATM, DigitsEnterFromTheRightAndDeleteStepsBack)
{
    TypingField typed(with(test::dollarDict()));
    EXPECT_EQ(typed.type(u"1"_s), u"$0.01");
    EXPECT_EQ(typed.type(u"2"_s), u"$0.12");
    EXPECT_EQ(typed.type(u"3"_s), u"$1.23");
    EXPECT_EQ(typed.type(u"4"_s), u"$12.34");
    EXPECT_EQ(typed.caret(), 6);
    EXPECT_EQ(typed.backspace(), u"$1.23");
    EXPECT_EQ(typed.backspace(), u"$0.12");
    EXPECT_EQ(typed.backspace(), u"$0.01");
    EXPECT_EQ(typed.backspace(), u"$0.00");
    EXPECT_EQ(typed.caret(), 5);
    // Where the caret stands does not matter: digits go to the right.
    typed.select(1, 0);
    EXPECT_EQ(typed.type(u"9"_s), u"$0.09");
    // Deleting a selection still drops exactly the last digit.
    TypingField selected(with(test::dollarDict()), u"$123.45"_s);
    selected.select(1, 3);
    EXPECT_EQ(selected.backspace(), u"$12.34");
}

TEST_F(MoneyATM, SignAndWholeSelection)
{
    TypingField field(with(test::dollarDict()), u"$12.34"_s);
    EXPECT_EQ(field.type(u"-"_s), u"-$12.34");
    EXPECT_EQ(field.type(u"5"_s), u"-$123.45");
    EXPECT_EQ(field.backspace(), u"-$12.34");

    TypingField all(with(test::dollarDict()), u"$12.34"_s);
    all.selectAll();
    EXPECT_EQ(all.type(u"7"_s), u"$0.07");
    TypingField negative(with(test::dollarDict()), u"-$12.34"_s);
    negative.selectAll();
    EXPECT_EQ(negative.type(u"7"_s), u"-$0.07");
}

TEST_F(MoneyATM, SeparatorsRefusedPastesParsed)
{
    TypingField field(with(test::dollarDict()), u"$12.34"_s);
    for (const QString& key : {u"."_s, u","_s, u"x"_s}) {
        EXPECT_EQ(field.type(key), u"$12.34");
        EXPECT_EQ(field.lastError, QStringLiteral("\"%1\" is not valid here").arg(key));
        EXPECT_TRUE(field.lastRefused);
    }
    TypingField paste(with(test::dollarDict()));
    EXPECT_EQ(paste.paste(u"1,234.5"_s), u"$1,234.50");
    EXPECT_EQ(paste.caret(), 9);
    // A paste that is not one amount stays as proposed, without a message.
    TypingField bad(with(test::dollarDict()));
    EXPECT_EQ(bad.paste(u"1.2.3"_s), u"1.2.3");
    EXPECT_TRUE(bad.lastError.isNull());
    EXPECT_FALSE(bad.lastRefused);
    // Cutting everything leaves the display of zero.
    TypingField cut(with(test::dollarDict()), u"$5.00"_s);
    cut.selectAll();
    EXPECT_EQ(cut.paste(QString()), u"$0.00");
}

TEST_F(MoneyATM, ZeroPlacesAndOtherSettings)
{
    TypingField whole(with(test::dollarDict(), 0));
    EXPECT_EQ(whole.type(u"12"_s), u"$12");
    EXPECT_EQ(whole.backspace(), u"$1");

    TypingField euro(with(test::currencyDict(u" €"_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u"."_s, u","_s)));
    EXPECT_EQ(euro.type(u"123456"_s), u"1.234,56 €");
    EXPECT_EQ(euro.caret(), 10);
    EXPECT_EQ(euro.type(u","_s), u"1.234,56 €");
    EXPECT_EQ(euro.lastError, uR"("," is not valid here)"_s);

    // The owner may switch modes at any time.
    owner.atm = false;
    TypingField standard(*current, u"1.234,56 €"_s, 8);
    EXPECT_EQ(standard.type(u"7"_s), u"1.234,56 €");
    EXPECT_TRUE(standard.lastRefused);
}
