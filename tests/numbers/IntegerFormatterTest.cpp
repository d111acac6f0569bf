#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include "../money/MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TypingField;

TEST(PositiveIntegerFormatter, TypingRegroupsAndRefuses)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQPositiveIntegerFormatter f;
    TypingField field(f);
    for (const QString& expected : {u"1"_s, u"12"_s, u"123"_s, u"1,234"_s, u"12,345"_s}) {
        field.type(QString(expected.back()));
        EXPECT_EQ(field.text(), expected);
        EXPECT_EQ(field.caret(), expected.size());
    }
    for (const QString& key : {u"-"_s, u"."_s, u"a"_s}) {
        EXPECT_EQ(field.type(key), u"12,345");
        EXPECT_EQ(field.lastError, QStringLiteral("\"%1\" is not valid here").arg(key));
    }
    // A digit in the middle: the caret stays behind it.
    field.select(1, 0);
    EXPECT_EQ(field.type(u"9"_s), u"192,345");
    EXPECT_EQ(field.caret(), 2);
    // Deleting: the caret keeps its place among the digits.
    TypingField deleting(f, u"1,234"_s, 3); // 1,2|34
    EXPECT_EQ(deleting.backspace(), u"134");
    EXPECT_EQ(deleting.caret(), 1);
    TypingField tail(f, u"12,345"_s);
    EXPECT_EQ(tail.backspace(), u"1,234");
    EXPECT_EQ(tail.caret(), 5);
    TypingField last(f, u"7"_s);
    EXPECT_EQ(last.backspace(), u"");
    ASSERT_TRUE(last.editorSelection.has_value());
    EXPECT_EQ(last.editorSelection->location, 0);
}

TEST(PositiveIntegerFormatter, LeadingZeros)
{
    test::ScopedLocale locale(u"en_US"_s);
    WQPositiveIntegerFormatter f;
    TypingField zeros(f);
    EXPECT_EQ(zeros.type(u"0"_s), u"0");
    EXPECT_EQ(zeros.type(u"0"_s), u"0");
    EXPECT_EQ(zeros.caret(), 1);
    EXPECT_EQ(zeros.type(u"5"_s), u"5");
    EXPECT_EQ(zeros.caret(), 1);
    // Only leading zeros before the caret move it.
    TypingField middle(f, u"0007"_s, 1);
    // A separator inserted at the caret moves it (at or before).
    EXPECT_EQ(middle.type(u"5"_s), u"5,007");
    EXPECT_EQ(middle.caret(), 2);
    TypingField front(f, u"008"_s, 0);
    EXPECT_EQ(front.type(u"0"_s), u"8");
    EXPECT_EQ(front.caret(), 0);
}

TEST(PositiveIntegerFormatter, LocaleGroupingDisplayAndParse)
{
    test::ScopedLocale locale(u"de_DE"_s);
    WQPositiveIntegerFormatter f;
    EXPECT_EQ(f.localizedThousandsSeparator(), u".");
    TypingField field(f);
    EXPECT_EQ(field.type(u"1234567"_s), u"1.234.567");
    EXPECT_EQ(field.type(u","_s), u"1.234.567");
    EXPECT_FALSE(field.lastError.isNull());
    EXPECT_EQ(f.stringForObjectValue(1234567), u"1.234.567");
    EXPECT_EQ(f.stringForObjectValue(QString()), u"");
    EXPECT_FALSE(f.stringForObjectValue(u"12"_s).has_value());
    QVariant value;
    QString error;
    EXPECT_TRUE(f.getObjectValue(&value, u"1.234"_s, &error));
    EXPECT_EQ(value.toDouble(), 1234);
    EXPECT_FALSE(f.getObjectValue(&value, u"12x"_s, &error));
    EXPECT_FALSE(error.isEmpty());
}
