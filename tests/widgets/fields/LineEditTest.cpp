#include "FieldTesting.h"
#include "ProbeFormatter.h"

#include <WQGeneral/fields/WQLineEdit.h>

#include <WQTestSupport.h>

#include <QClipboard>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace wq;

namespace {

using test::ProbeFormatter;

class LineEdit : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(edit);
        layout->addWidget(other);
        test::showActive(window);
        edit->setFocus();
    }

    std::shared_ptr<ProbeFormatter> probe = std::make_shared<ProbeFormatter>();
    QWidget window;
    WQLineEdit* edit = new WQLineEdit(probe, &window);
    WQLineEdit* other = new WQLineEdit(&window);
};

} // namespace

TEST_F(LineEdit, HandsEachKeystrokeToTheFormatterAndShowsItsAnswer)
{
    QSignalSpy refused(edit, &WQLineEdit::editRefused);
    QSignalSpy changed(edit, &QLineEdit::textChanged);
    QTest::keyClicks(edit, "12");
    EXPECT_EQ(edit->text(), "12");
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"1", {1, 0}, "12", {2, 0}}));
    EXPECT_EQ(probe->event.type, WQEditEvent::Type::KeyDown);
    EXPECT_EQ(probe->event.characters, "2");
    EXPECT_EQ(probe->editor, edit) << "the focused line edit is the field editor";

    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_TRUE(probe->event.isDeleteKeyDown());
    QTest::keyClick(edit, Qt::Key_Home);
    QTest::keyClick(edit, Qt::Key_Delete);
    EXPECT_EQ(edit->text(), "");
    EXPECT_FALSE(probe->event.isDeleteKeyDown()) << "forward delete is not the delete key";
    QTest::keyClick(edit, '3', Qt::AltModifier);
    EXPECT_TRUE(probe->event.optionKeyDown);

    // A refusal puts text and selection back; a rewrite shows its own.
    QTest::keyClicks(edit, "45");
    edit->setSelection(1, 1);
    QTest::keyClick(edit, 'x');
    EXPECT_EQ(edit->text(), "345");
    EXPECT_EQ(edit->selectedRange(), (WQRange{1, 1}));
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.at(0).at(0).toString(), "\"x\" is not valid here");
    EXPECT_EQ(changed.last().at(0).toString(), "345") << "the last change reported is what is shown";
    QTest::keyClick(edit, 'u');
    EXPECT_EQ(edit->text(), "35");
    EXPECT_EQ(edit->selectedRange(), (WQRange{0, 2}));
}

TEST_F(LineEdit, PasteCutUndoInputMethodsAndSlotsAreEditsToo)
{
    QTest::keyClicks(edit, "123");
    QGuiApplication::clipboard()->setText("45");
    edit->setSelection(1, 1);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "1453");
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"123", {1, 1}, "1453", {3, 0}}));
    edit->setSelection(0, 1);
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "453");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1");

    // Undo brings back what the user saw, which the formatter already took.
    const int before = probe->calls;
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "1453");
    EXPECT_EQ(probe->calls, before);

    // Text being composed is no edit yet; committed, it is a keystroke.
    edit->end(false);
    QInputMethodEvent compose(QStringLiteral("x"), {});
    QApplication::sendEvent(edit, &compose);
    EXPECT_EQ(edit->text(), "1453");
    for (const char* committed : {"6", "x"}) {
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromLatin1(committed));
        QApplication::sendEvent(edit, &commit);
        EXPECT_EQ(edit->text(), "14536");
        EXPECT_EQ(probe->event.characters, committed);
    }

    // Edits from slots are judged at once, with no event.
    edit->insert("x");
    edit->insert("7");
    EXPECT_EQ(edit->text(), "145367");
    EXPECT_EQ(probe->event.type, WQEditEvent::Type::None);
}

TEST_F(LineEdit, EndingAnEditReadsTheValueAndAnUnreadableOneKeepsTheFocus)
{
    QSignalSpy refused(edit, &WQLineEdit::valueRefused);
    QSignalSpy returned(edit, &QLineEdit::returnPressed);
    edit->setObjectValue(5);
    QTest::keyClicks(edit, "12");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(edit->objectValue(), QVariant(512));
    EXPECT_EQ(returned.count(), 1);

    QTest::keyClicks(edit, "y");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(returned.count(), 1) << "a refused value goes no further";
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.at(0).at(0).toString(), "Not a number.");

    // Leaving the field with a text it cannot read brings the focus back.
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(refused.count(), 2);
    EXPECT_TRUE(test::spinUntil([&] { return edit->hasFocus(); }));
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_TRUE(other->hasFocus());
    test::spinFor(30);
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(LineEdit, WithoutFormatterItIsAPlainLineEditAndFollowsAFormatterGivenLater)
{
    other->setFocus();
    QTest::keyClicks(other, "any text!");
    EXPECT_EQ(other->text(), "any text!");

    // It undoes like any line edit: Ctrl+Z, and Undo in its context menu.
    QTest::keyClick(other, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(other->text(), "any text");
    EXPECT_TRUE(test::undoFromContextMenu(*other));
    EXPECT_EQ(other->text(), "any tex");
    QTest::keyClick(other, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(other, '!');
    EXPECT_EQ(other->text(), "any text!");
    EXPECT_TRUE(other->validateEditing());
    EXPECT_EQ(other->objectValue(), QVariant("any text!"));

    // A formatter given later shows the value through it, and its changes.
    QSignalSpy judged(other, &WQLineEdit::editedTextChanged);
    other->setObjectValue(7);
    other->setFormatter(probe);
    EXPECT_EQ(other->text(), "7");
    probe->prefix = QStringLiteral("#");
    probe->announceChange();
    EXPECT_EQ(other->text(), "#7");
    QTest::keyClicks(other, "1x");
    EXPECT_EQ(judged.count(), 1) << "the refused x changed nothing";
    other->abortEditing();
    EXPECT_EQ(other->text(), "#7");
}
