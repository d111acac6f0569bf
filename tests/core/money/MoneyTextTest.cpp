// Amounts shown as text and text read back as amounts.

#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <cmath>
#include <limits>

using namespace wq;
using namespace Qt::StringLiterals;

namespace {

class MoneyText : public test::MoneyTest {};

// A success clears a message left in the place before.
test::Reading parse(const WQMoneyFormatter& f, const QString& text)
{
    const test::Reading read = test::readWith(f, text, u"stale"_s);
    EXPECT_EQ(read.ok, read.error.isNull()) << text.toStdString();
    return read;
}

} // namespace

TEST_F(MoneyText, DisplayOfCustomSettings)
{
    const QVariantMap dollar = test::dollarDict(), parens = test::dollarDict(u"($#,##0.00)"_s),
                      unsignedNegative = test::dollarDict(u"$#,##0.00"_s),
                      euro = test::currencyDict(u" €"_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u","_s, u"."_s),
                      plain = test::currencyDict(u"$"_s, u"$0.00"_s, u"-$0.00"_s, u","_s, u"."_s),
                      swiss = test::currencyDict(u"CHF "_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u"'"_s, u"."_s),
                      wide = test::currencyDict(u"$"_s, u"$#,##0.00"_s, u"-$#,##0.00"_s, u"::"_s, u"."_s),
                      bare = test::currencyDict(u"$"_s, u"$#,##0.00"_s, u"($#,##0.00)"_s, u","_s, u""_s);
    const struct { const QVariantMap& dict; qint8 places; double value; const char16_t* text; } rows[] = {
        // Rounding looks at the first dropped digit only, half to even; the
        // sign test looks at the whole part before the carry.
        {dollar, 2, 1234.5, u"$1,234.50"}, {dollar, 2, -1234.5, u"-$1,234.50"}, {dollar, 2, 0.375, u"$0.38"},
        {dollar, 2, 0.625, u"$0.62"},      {dollar, 2, 999.999, u"$1,000.00"},  {dollar, 2, -0.004, u"$0.00"},
        {dollar, 2, -0.999, u"$1.00"},     {dollar, 2, -1.999, u"-$2.00"},      {dollar, 2, -0.0, u"$0.00"},
        {dollar, 2, 0.12501, u"$0.12"},    {dollar, 2, 0.135, u"$0.14"},        {dollar, 2, 1e6, u"$1,000,000.00"},
        {dollar, 2, 123, u"$123.00"},      {dollar, 0, 2.5, u"$2"},             {dollar, 0, 3.5, u"$3"},
        {dollar, 0, 3.6, u"$4"},           {dollar, 0, 1234, u"$1,234"},        {dollar, -1, 1234, u"$1,234"},
        // 1.2346 is stored just below: the dropped digit reads 5 and 234 is even.
        {dollar, 3, 1.2345, u"$1.234"},    {dollar, 3, 1.2347, u"$1.235"},      {dollar, 3, 1.2346, u"$1.234"},
        {parens, 2, -12, u"($12.00)"},     {unsignedNegative, 2, -12, u"$12.00"},
        // Custom symbols keep exactly what the dictionary says; no "," in the
        // format means no grouping.
        {euro, 2, 12, u"12.00 €"},         {euro, 2, -1234.5, u"-1,234.50 €"},  {plain, 2, 1234.5, u"$1234.50"},
        {swiss, 2, 1234567.891, u"CHF 1'234'567.89"},                           {swiss, 2, -5, u"-CHF 5.00"},
        // Longer separators shift later groups; no decimal separator groups
        // the units along with the whole part. Both are kept as they come out.
        {wide, 2, 1234567, u"$1::23::4567.00"}, {bare, 2, -1234.5, u"($123,450)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.value << " with " << int(row.places) << " places");
        EXPECT_EQ(with(row.dict, row.places).stringForObjectValue(row.value), row.text);
    }
    // Other values: whole numbers, text as it stands, nothing for the rest.
    const WQMoneyFormatter& f = with(dollar);
    EXPECT_EQ(f.stringForObjectValue(qlonglong(-42)), u"-$42.00");
    EXPECT_EQ(f.stringForObjectValue(u"not an amount"_s), u"not an amount");
    EXPECT_FALSE(f.stringForObjectValue(QVariant()).has_value());
    EXPECT_FALSE(f.stringForObjectValue(true).has_value());
    EXPECT_FALSE(f.stringForObjectValue(QVariantList{1}).has_value());
}

TEST_F(MoneyText, ParsingOfCustomSettings)
{
    const QVariantMap dollar = test::dollarDict(), euro = test::euroDict(),
                      trailing = test::currencyDict(u" kr."_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u","_s, u"."_s),
                      leading = test::currencyDict(u"kr. "_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u","_s, u"."_s);
    const QString point = uR"("." can't appear more than once here)"_s;
    const QString comma = uR"("," can't appear more than once here)"_s;
    const struct { const QVariantMap& dict; QString text; double amount; QString error; } rows[] = {
        {dollar, u"$1,234.56"_s, 1234.56, {}}, {dollar, u"-$1,234.56"_s, -1234.56, {}}, {dollar, u"($12.00)"_s, -12, {}},
        {dollar, u"--5"_s, 5, {}},             {dollar, u"(-5)"_s, 5, {}},              {dollar, u"1..5"_s, 1.5, {}},
        {dollar, u"1.2.3"_s, 1.2, point},      {dollar, u"abc"_s, 0, {}},               {dollar, u""_s, 0, {}},
        {dollar, u"1.2.3.4"_s, 1.2, point},    {dollar, u")5("_s, 5, {}},               {dollar, u"((7))"_s, 7, {}},
        {dollar, u"12-"_s, -12, {}},           {dollar, u"$ 1 000"_s, 1000, {}},        {dollar, u".5"_s, 0.5, {}},
        // A non-ASCII digit survives the filter but is not read.
        {dollar, u"\u0663"_s, 0, {}},
        {euro, u"1.234,56"_s, 1234.56, {}},    {euro, u"-1.234,56 €"_s, -1234.56, {}},  {euro, u"1,2,3"_s, 1.2, comma},
        // A symbol with a point: its point is not a second separator.
        {trailing, u"12.50kr."_s, 12.5, {}},   {trailing, u"12.50 kr."_s, 12.5, {}},    {leading, u"kr.12.50"_s, 12.5, {}},
        {leading, u"1.2.50"_s, 1.2, point},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text.toStdString());
        const test::Reading p = parse(with(row.dict), row.text);
        EXPECT_DOUBLE_EQ(p.value.toDouble(), row.amount);
        EXPECT_EQ(p.error, row.error);
    }
    // Nothing to read: refused with 0, the old message left alone.
    const test::Reading nothing = test::readWith(with(dollar), QString(), u"kept"_s);
    EXPECT_TRUE(!nothing.ok && nothing.value == QVariant(0.0) && nothing.error == u"kept");
}

TEST(MoneyTextLocales, SystemSettingsShowAndRead)
{
    const struct { QString locale; double value; const char16_t* text; } shown[] = {
        {u"de_DE"_s, 1234.5, u"1.234,50 €"}, {u"fr_FR"_s, 1234567.5, u"1\u202F234\u202F567,50 €"},
        // No base pattern: the yen's own pattern has no decimals.
        {u"ja_JP"_s, 1234.5, u"￥1,234"},           {u"ja_JP"_s, 1235.5, u"￥1,235"},
    };
    for (const auto& row : shown) {
        test::ScopedLocale locale(row.locale);
        EXPECT_EQ(WQMoneyFormatter().stringForAmount(row.value), row.text) << row.locale.toStdString();
    }
    // What a field shows reads back in every locale (EveryLocale); these are typed otherwise.
    const struct { QString locale; QString text; double amount; } read[] = {
        {u"de_DE"_s, u"-1.234,56€"_s, -1234.56}, {u"fr_FR"_s, u"1 234,56"_s, 1234.56},
    };
    for (const auto& row : read) {
        test::ScopedLocale locale(row.locale);
        EXPECT_DOUBLE_EQ(parse(WQMoneyFormatter(), row.text).value.toDouble(), row.amount) << row.text.toStdString();
    }
    test::ScopedLocale locale(u"ja_JP"_s);
    EXPECT_EQ(WQMoneyFormatterOwner().moneyFormatter()->stringForAmount(1234.5), u"￥1,234.50");
}

TEST(MoneyTextLocales, APosixEnvironmentGroupsAmountsAndNumbersAlike)
{
    for (const QString& name : {u"C"_s, u"POSIX"_s, u"C.UTF-8"_s}) {
        SCOPED_TRACE(name.toStdString());
        test::ScopedLocale locale(name);
        EXPECT_EQ(WQMoneyFormatter().stringForAmount(2500), u"$2,500.00");
        EXPECT_EQ(WQPositiveIntegerFormatter().stringForObjectValue(1234567).value_or(QString()), u"1,234,567");
        EXPECT_EQ(WQDecimalFormatter().stringForObjectValue(4.25).value_or(QString()), u"4.25");
    }
}

TEST_F(MoneyText, OutOfRangeAmountsAreClampedNotUndefined)
{
    const WQMoneyFormatter& f = with(test::dollarDict());
    const double inf = std::numeric_limits<double>::infinity();
    const struct { double amount; const char16_t* text; } shown[] = {
        {1e308, u"$9,223,372,036,854,775,807.00"},   {inf, u"$9,223,372,036,854,775,807.00"},
        {-1e308, u"-$9,223,372,036,854,775,808.00"}, {-inf, u"-$9,223,372,036,854,775,808.00"},
        {std::nan(""), u"$0.00"},                    {9.2e18, u"$9,200,000,000,000,000,000.00"},
    };
    for (const auto& row : shown)
        EXPECT_EQ(f.stringForAmount(row.amount), row.text) << row.amount;

    // Past the largest double reads as that double, never as 0 or infinity;
    // leading zeros and underflow read as what they are.
    const QString huge = u"1"_s + QString(309, u'0');
    const struct { QString text; double amount; } read[] = {
        {huge, std::numeric_limits<double>::max()},
        {u"-"_s + huge + u".5"_s, -std::numeric_limits<double>::max()},
        {u"1"_s + QString(400, u'0'), std::numeric_limits<double>::max()},
        {QString(400, u'0') + u"5"_s, 5},
        {u"0."_s + QString(400, u'0') + u"1"_s, 0},
        {u"0."_s + QString(330, u'0') + u"1"_s, 0},
        {u"1"_s + QString(300, u'0'), 1e300},
    };
    for (const auto& row : read)
        EXPECT_EQ(parse(f, row.text).value.toDouble(), row.amount) << row.text.size();
}
