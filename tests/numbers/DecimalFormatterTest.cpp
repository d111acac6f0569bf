#include <WQGeneral/numbers/WQDecimalFormatter.h>

#include "../money/MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TypingField;

TEST(DecimalFormatter, Display)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQDecimalFormatter f;
    EXPECT_EQ(f.stringForObjectValue(3), u"3");
    EXPECT_EQ(f.stringForObjectValue(-7.0), u"-7");
    EXPECT_EQ(f.stringForObjectValue(2.5), u"2.50");
    // The C rounding of the stored double, which is just below 1.005.
    EXPECT_EQ(f.stringForObjectValue(1.005), u"1.00");
    EXPECT_EQ(f.stringForObjectValue(1.015625), u"1.02");
    // Beyond 32 bits, always two decimals.
    EXPECT_EQ(f.stringForObjectValue(3e9), u"3000000000.00");
    EXPECT_EQ(f.stringForObjectValue(2147483647.0), u"2147483647");
    EXPECT_EQ(f.stringForObjectValue(QString()), u"");
    f.setDecimalSeparator(u","_s);
    EXPECT_EQ(f.stringForObjectValue(2.5), u"2,50");
    f.setDecimalSeparator(QString());
    EXPECT_EQ(f.decimalSeparator(), u".");

    test::ScopedLocale german(u"de_DE"_s);
    EXPECT_EQ(WQDecimalFormatter::systemDecimalSeparator(), u",");
    EXPECT_EQ(WQDecimalFormatter().stringForObjectValue(-0.25), u"-0,25");
}

TEST(DecimalFormatter, ParsingFlipsMinusesAndDropsForeignCharacters)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQDecimalFormatter f;
    const struct { QString text; double value; } rows[] = {
        {u"--1.5"_s, 1.5}, {u"-1.5"_s, -1.5}, {u"1.5-"_s, -1.5}, {u"a1.5b"_s, 1.5},
        {u"1,234.5"_s, 1234.5}, {u"42"_s, 42},
    };
    for (const auto& row : rows) {
        QVariant value;
        QString error = u"stale"_s;
        EXPECT_TRUE(f.getObjectValue(&value, row.text, &error)) << row.text.toStdString();
        EXPECT_DOUBLE_EQ(value.toDouble(), row.value) << row.text.toStdString();
        EXPECT_TRUE(error.isNull());
    }
    QVariant value;
    QString error;
    EXPECT_FALSE(f.getObjectValue(&value, u"1.2.3"_s, &error));
    EXPECT_FALSE(error.isEmpty());

    test::ScopedLocale german(u"de_DE"_s);
    WQDecimalFormatter comma;
    EXPECT_TRUE(comma.getObjectValue(&value, u"-2,75 %"_s, &error));
    EXPECT_DOUBLE_EQ(value.toDouble(), -2.75);
}

TEST(DecimalFormatter, TypingOnlyFilters)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQDecimalFormatter f;
    TypingField field(f);
    EXPECT_EQ(field.type(u"12.5"_s), u"12.5");
    EXPECT_FALSE(field.lastRefused);
    EXPECT_EQ(field.caret(), 4);
    for (const QString& key : {u"-"_s, u","_s, u"x"_s}) {
        EXPECT_EQ(field.type(key), u"12.5");
        EXPECT_TRUE(field.lastRefused);
        EXPECT_EQ(field.lastError, QStringLiteral("\"%1\" is not valid here").arg(key));
    }
    // A second point is not this formatter's business; parsing refuses it.
    EXPECT_EQ(field.type(u"."_s), u"12.5.");
    EXPECT_EQ(field.backspace(), u"12.5");
    field.selectAll();
    EXPECT_EQ(field.backspace(), u"");
    ASSERT_TRUE(field.editorSelection.has_value());
    EXPECT_EQ(field.editorSelection->location, 0);
}
