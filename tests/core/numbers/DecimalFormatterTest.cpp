#include <WQGeneral/numbers/WQDecimalFormatter.h>

#include "TypingField.h"
#include "WQTestSupport.h"

using namespace wq;
using namespace Qt::StringLiterals;
using test::notValid;

TEST(DecimalFormatter, Display)
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

    test::ScopedLocale german(u"de_DE"_s);
    EXPECT_EQ(WQDecimalFormatter().stringForObjectValue(-0.25), u"-0,25");
}

TEST(DecimalFormatter, ParsingFlipsMinusesAndDropsForeignCharacters)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQDecimalFormatter f;
    const struct { QString text; double value; } rows[] = {
        {u"--1.5"_s, 1.5}, {u"-1.5"_s, -1.5}, {u"1.5-"_s, -1.5}, {u"a1.5b"_s, 1.5}, {u"1,234.5"_s, 1234.5}, {u"42"_s, 42},
    };
    QVariant value;
    QString error;
    for (const auto& row : rows) {
        error = u"stale"_s;
        EXPECT_TRUE(f.getObjectValue(&value, row.text, &error)) << row.text.toStdString();
        EXPECT_DOUBLE_EQ(value.toDouble(), row.value) << row.text.toStdString();
        EXPECT_TRUE(error.isNull());
    }
    EXPECT_FALSE(f.getObjectValue(&value, u"1.2.3"_s, &error));
    EXPECT_FALSE(error.isEmpty());

    test::ScopedLocale german(u"de_DE"_s);
    EXPECT_TRUE(WQDecimalFormatter().getObjectValue(&value, u"-2,75 %"_s, &error));
    EXPECT_DOUBLE_EQ(value.toDouble(), -2.75);
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
