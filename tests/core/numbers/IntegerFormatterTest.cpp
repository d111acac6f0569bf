#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include "TypingField.h"
#include "WQTestSupport.h"

using namespace wq;
using namespace Qt::StringLiterals;
using test::notValid;

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
    QVariant value;
    QString error;
    EXPECT_TRUE(f.getObjectValue(&value, u"1.234"_s, &error));
    EXPECT_EQ(value.toDouble(), 1234);
    EXPECT_FALSE(f.getObjectValue(&value, u"12x"_s, &error));
    EXPECT_FALSE(error.isEmpty());
}
