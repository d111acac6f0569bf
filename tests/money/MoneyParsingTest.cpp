#include <WQGeneral/money/WQMoneyFormatter.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TestDelegate;

namespace {

struct Parsed {
    double amount;
    QString error;
};

Parsed parse(const WQMoneyFormatter& f, const QString& text)
{
    QVariant value;
    QString error = u"stale"_s;
    const bool ok = f.getObjectValue(&value, text, &error);
    EXPECT_EQ(ok, error.isNull()) << text.toStdString();
    return {value.toDouble(), error};
}

class MoneyParsing : public ::testing::Test {
protected:
    void TearDown() override { WQMoneyFormatter::_wq_removed_delegate(&owner); }
    const WQMoneyFormatter& with(const QVariantMap& dict)
    {
        owner.dict = dict;
        WQMoneyFormatter::_wq_removed_delegate(&owner);
        current = WQMoneyFormatter::moneyFormatterForDelegate(&owner, 2);
        return *current;
    }
    TestDelegate owner;
    std::shared_ptr<WQMoneyFormatter> current;
};

} // namespace

TEST_F(MoneyParsing, WorkedTable)
{
    const auto& f = with(test::dollarDict());
    const QString dup = uR"("." can't appear more than once here)"_s;
    const struct { QString text; double amount; QString error; } rows[] = {
        {u"$1,234.56"_s, 1234.56, {}}, {u"-$1,234.56"_s, -1234.56, {}}, {u"($12.00)"_s, -12, {}},
        {u"--5"_s, 5, {}},             {u"(-5)"_s, 5, {}},              {u"1..5"_s, 1.5, {}},
        {u"1.2.3"_s, 1.2, dup},        {u"abc"_s, 0, {}},               {u""_s, 0, {}},
        {u"1.2.3.4"_s, 1.2, dup},      {u")5("_s, 5, {}},               {u"((7))"_s, 7, {}},
        {u"12-"_s, -12, {}},           {u"$ 1 000"_s, 1000, {}},        {u".5"_s, 0.5, {}},
        {u"\u0663"_s, 0, {}}, // a non-ASCII digit survives the filter but is not read
    };
    for (const auto& row : rows) {
        const Parsed p = parse(f, row.text);
        EXPECT_DOUBLE_EQ(p.amount, row.amount) << row.text.toStdString();
        EXPECT_EQ(p.error, row.error) << row.text.toStdString();
    }
    QVariant value = 99;
    QString error = u"kept"_s;
    EXPECT_FALSE(f.getObjectValue(&value, QString(), &error));
    EXPECT_EQ(value.toDouble(), 0.0);
    EXPECT_EQ(error, u"kept");
}

TEST_F(MoneyParsing, SeparatorsAndSymbolsOfOtherSettings)
{
    const auto& euro = with(test::currencyDict(u" €"_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u"."_s, u","_s));
    EXPECT_DOUBLE_EQ(parse(euro, u"1.234,56"_s).amount, 1234.56);
    EXPECT_DOUBLE_EQ(parse(euro, u"-1.234,56 €"_s).amount, -1234.56);
    EXPECT_EQ(parse(euro, u"1,2,3"_s).error, uR"("," can't appear more than once here)"_s);

    // A symbol with a point: its point is not a second separator.
    const auto& trailing = with(test::currencyDict(u" kr."_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u","_s, u"."_s));
    const Parsed kr = parse(trailing, u"12.50kr."_s);
    EXPECT_DOUBLE_EQ(kr.amount, 12.5);
    EXPECT_TRUE(kr.error.isNull());
    EXPECT_DOUBLE_EQ(parse(trailing, u"12.50 kr."_s).amount, 12.5);

    const auto& leading = with(test::currencyDict(u"kr. "_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u","_s, u"."_s));
    const Parsed front = parse(leading, u"kr.12.50"_s);
    EXPECT_DOUBLE_EQ(front.amount, 12.5);
    EXPECT_TRUE(front.error.isNull());
    // Not the symbol's point: still an error.
    EXPECT_FALSE(parse(leading, u"1.2.50"_s).error.isNull());
}

TEST(MoneyParsingLocales, SystemSeparators)
{
    {
        test::ScopedLocale locale(u"de_DE"_s);
        WQMoneyFormatter f;
        EXPECT_DOUBLE_EQ(parse(f, u"1.234,56 €"_s).amount, 1234.56);
        EXPECT_DOUBLE_EQ(parse(f, u"-1.234,56€"_s).amount, -1234.56);
    }
    {
        test::ScopedLocale locale(u"fr_FR"_s);
        WQMoneyFormatter f;
        EXPECT_DOUBLE_EQ(parse(f, u"1\u202F234,56 €"_s).amount, 1234.56);
        EXPECT_DOUBLE_EQ(parse(f, u"1 234,56"_s).amount, 1234.56);
        // What the formatter shows reads back as the amount shown.
        EXPECT_DOUBLE_EQ(parse(f, f.stringForAmount(-98765.43)).amount, -98765.43);
    }
}
