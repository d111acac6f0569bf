// Real key events typed into line edits that carry the number and money
// formatters, in both money typing modes and under two regional settings.

#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>

#include "FieldTesting.h"
#include "KeyTyping.h"
#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <QSignalSpy>
#include <QTest>

using namespace wq;
using namespace Qt::StringLiterals;

namespace {

// Each row's keys ('\b' is Backspace) to the focused field, then the text
// expected after them.
void steps(const WQLineEdit& edit, std::initializer_list<std::pair<QString, QString>> rows)
{
    for (const auto& [keys, text] : rows) {
        test::type(keys);
        EXPECT_EQ(edit.QLineEdit::text(), text) << "after " << keys.toStdString();
    }
}

class MoneyFields : public test::MoneyTest {
protected:
    // A shown, focused field with the owner's two-place formatter.
    std::unique_ptr<WQLineEdit> field()
    {
        auto edit = std::make_unique<WQLineEdit>(owner.moneyFormatter());
        test::showActive(*edit);
        edit->setFocus();
        return edit;
    }
};

} // namespace

// The typing tables of both modes and of other settings are the formatter's
// own tests; here real keys go through a field, which shows each rewrite
// with its caret and reads the value when editing ends.
TEST_F(MoneyFields, BothTypingModesWithRealKeys)
{
    test::ScopedLocale locale(u"en_US"_s);
    const auto edit = field();
    QSignalSpy refusals(edit.get(), &WQLineEdit::editRefused);
    steps(*edit, {{u"1234"_s, u"$1,234"_s}, {u"-"_s, u"-$1,234"_s}, {u"-.56"_s, u"$1,234.56"_s}});
    EXPECT_EQ(refusals.count(), 0);
    steps(*edit, {{u"a"_s, u"$1,234.56"_s}});
    ASSERT_EQ(refusals.count(), 1);
    EXPECT_EQ(refusals.at(0).at(0).toString(), test::notValid(u"a"_s));
    // Backspace over a group keeps the caret among the digits.
    edit->setCursorPosition(4); // $1,2|34.56
    steps(*edit, {{u"\b"_s, u"$134.56"_s}});
    EXPECT_EQ(edit->cursorPosition(), 2);
    QTest::keyClick(edit.get(), Qt::Key_Return);
    EXPECT_DOUBLE_EQ(edit->objectValue().toDouble(), 134.56);

    // The owner's mode counts from the next key.
    owner.setUserInputLikeATM(true);
    edit->selectAll();
    steps(*edit, {{u"1234"_s, u"$12.34"_s}, {u"-5"_s, u"-$123.45"_s}, {u"\b"_s, u"-$12.34"_s}});
    EXPECT_EQ(edit->cursorPosition(), 7);
    QTest::keyClick(edit.get(), Qt::Key_Return);
    EXPECT_DOUBLE_EQ(edit->objectValue().toDouble(), -12.34);
}

TEST_F(MoneyFields, KeypadDecimalKeyAndArabicAndPersianDigitsTypeWhatTheFieldReads)
{
    test::ScopedLocale locale(u"de_DE"_s);
    const auto edit = field();
    // Arabic-Indic one and two, Persian five, as their keys send them.
    for (const QChar digit : u"\u0661\u0662"_s)
        QTest::sendKeyEvent(QTest::Click, edit.get(), Qt::Key_unknown, QString(digit), Qt::NoModifier);
    QTest::keyClick(edit.get(), Qt::Key_Period, Qt::KeypadModifier);
    QTest::sendKeyEvent(QTest::Click, edit.get(), Qt::Key_unknown, QString(QChar(0x06F5)), Qt::NoModifier);
    EXPECT_EQ(edit->QLineEdit::text(), u"12,5 €");
    QTest::keyClick(edit.get(), Qt::Key_Return);
    EXPECT_DOUBLE_EQ(edit->objectValue().toDouble(), 12.5);
    // The main keyboard's "." stays the German grouping key.
    edit->selectAll();
    steps(*edit, {{u"1.5"_s, u"15 €"_s}});
}

// Undo steps and the end of a refusal are the field session's; here the keys
// and the context menu reach them.
TEST_F(MoneyFields, EscapeGivesTheEditUpAndTheContextMenuUndoesThat)
{
    test::ScopedLocale locale(u"en_US"_s);
    const auto edit = field();
    edit->setObjectValue(12.5);
    edit->selectAll();
    steps(*edit, {{u"91x2"_s, u"$912"_s}});
    QTest::keyClick(edit.get(), Qt::Key_Escape);
    EXPECT_EQ(edit->text(), u"$12.50");
    EXPECT_EQ(edit->selectedText(), u"$12.50");
    EXPECT_FALSE(edit->hasPendingEdit());
    EXPECT_TRUE(edit->hasFocus());
    EXPECT_TRUE(test::undoFromContextMenu(*edit));
    EXPECT_EQ(edit->text(), u"$912");
    EXPECT_TRUE(edit->validateEditing());
    EXPECT_EQ(edit->objectValue().toDouble(), 912.0);
}
