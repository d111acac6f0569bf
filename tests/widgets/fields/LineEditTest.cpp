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

TEST_F(LineEdit, HandsEachKeystrokeToTheFormatter)
{
    QTest::keyClicks(edit, "12");
    EXPECT_EQ(edit->text(), "12");
    EXPECT_EQ(probe->calls, 2);
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"1", {1, 0}, "12", {2, 0}}));
    EXPECT_EQ(probe->event.type, WQEditEvent::Type::KeyDown);
    EXPECT_EQ(probe->event.characters, "2");
    EXPECT_FALSE(probe->event.optionKeyDown);
    EXPECT_EQ(probe->editor, edit);
    EXPECT_EQ(probe->editorString, "1") << "the field editor holds the text from before the edit";
    EXPECT_NE(WQToolkit::shared().currentEvent().type, WQEditEvent::Type::KeyDown) << "only while judging";

    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_TRUE(probe->event.isDeleteKeyDown());
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"12", {2, 0}, "1", {1, 0}}));

    QTest::keyClick(edit, Qt::Key_Home);
    QTest::keyClick(edit, Qt::Key_Delete);
    EXPECT_EQ(edit->text(), "");
    EXPECT_FALSE(probe->event.isDeleteKeyDown()) << "forward delete is not the delete key";

    QTest::keyClick(edit, '3', Qt::AltModifier);
    EXPECT_EQ(edit->text(), "3");
    EXPECT_TRUE(probe->event.optionKeyDown);

    // Typing over a selection reports the selection it replaced.
    QTest::keyClicks(edit, "45");
    edit->setSelection(1, 2);
    QTest::keyClick(edit, '9');
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"345", {1, 2}, "39", {2, 0}}));
}

TEST_F(LineEdit, RefusalsRestoreTextAndSelectionRewritesShowTheirs)
{
    QTest::keyClicks(edit, "123");
    edit->setSelection(1, 1);
    QSignalSpy refused(edit, &WQLineEdit::editRefused);
    QSignalSpy changed(edit, &QLineEdit::textChanged);

    for (char key : {'x', '!'}) {
        QTest::keyClick(edit, key);
        EXPECT_EQ(edit->text(), "123");
        EXPECT_EQ(edit->selectedRange(), (WQRange{1, 1}));
    }
    // A silent refusal says nothing.
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.at(0).at(0).toString(), "\"x\" is not valid here");
    ASSERT_FALSE(changed.isEmpty());
    EXPECT_EQ(changed.last().at(0).toString(), "123") << "the last change reported is what is shown";

    // The next keystroke is judged against the restored state.
    QTest::keyClick(edit, '7');
    EXPECT_EQ(edit->text(), "173");
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"123", {1, 1}, "173", {2, 0}}));

    // Rewrites are shown with their selection.
    edit->clear();
    QTest::keyClicks(edit, "ab");
    QTest::keyClick(edit, 'u');
    EXPECT_EQ(edit->text(), "AB");
    EXPECT_EQ(edit->selectedRange(), (WQRange{0, 2}));

    // A rewrite equal to the proposal is kept, not taken for a refusal.
    QTest::keyClick(edit, Qt::Key_End);
    QTest::keyClick(edit, '=');
    EXPECT_EQ(edit->text(), "AB=");
    EXPECT_EQ(edit->selectedRange(), (WQRange{3, 0}));
}

TEST_F(LineEdit, PasteCutUndoAndSlotsAreEditsToo)
{
    QTest::keyClicks(edit, "123");
    QGuiApplication::clipboard()->setText("4x");
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "123");
    EXPECT_EQ(edit->selectedRange(), (WQRange{0, 3}));

    QGuiApplication::clipboard()->setText("45");
    edit->setSelection(1, 1);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "1453");
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"123", {1, 1}, "1453", {3, 0}}));

    edit->setSelection(0, 1);
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "453");
    EXPECT_EQ(probe->last.proposed, "453");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1");

    // Undo brings back what the user saw, which the formatter already took.
    const int before = probe->calls;
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "1453");
    EXPECT_EQ(probe->calls, before);

    // Edits from slots are judged at once, with no event.
    edit->end(false);
    edit->insert("x");
    EXPECT_EQ(edit->text(), "1453");
    edit->insert("6");
    EXPECT_EQ(edit->text(), "14536");
    EXPECT_EQ(probe->event.type, WQEditEvent::Type::None);
    // Text set by the program is no edit, but becomes the state edits start from.
    edit->setText("55");
    edit->insert("!");
    EXPECT_EQ(probe->last.original, "55");
    EXPECT_EQ(edit->text(), "55");
}

TEST_F(LineEdit, InputMethodCommitsAreKeystrokes)
{
    QTest::keyClicks(edit, "1");
    QInputMethodEvent compose(QStringLiteral("x"), {});
    QApplication::sendEvent(edit, &compose);
    EXPECT_EQ(edit->text(), "1") << "text being composed is no edit yet";

    QSignalSpy refused(edit, &WQLineEdit::editRefused);
    for (const char* committed : {"2", "x"}) {
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromLatin1(committed));
        QApplication::sendEvent(edit, &commit);
        EXPECT_EQ(edit->text(), "12");
        EXPECT_EQ(probe->event.type, WQEditEvent::Type::KeyDown);
        EXPECT_EQ(probe->event.characters, committed);
    }
    EXPECT_EQ(refused.count(), 1);
}

TEST_F(LineEdit, EndingAnEditReadsTheValue)
{
    QSignalSpy values(edit, &WQLineEdit::objectValueChanged);
    QSignalSpy refused(edit, &WQLineEdit::valueRefused);
    QSignalSpy returned(edit, &QLineEdit::returnPressed);

    edit->setObjectValue(5);
    EXPECT_EQ(edit->text(), "5");
    EXPECT_FALSE(edit->hasPendingEdit());

    QTest::keyClicks(edit, "12");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(edit->objectValue(), QVariant(512));
    EXPECT_EQ(returned.count(), 1);
    EXPECT_EQ(values.count(), 2);

    QTest::keyClicks(edit, "y");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(returned.count(), 1) << "a refused value goes no further";
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.at(0).at(0).toString(), "Not a number.");
    EXPECT_EQ(edit->objectValue(), QVariant(512));

    // Leaving the field with a text it cannot read brings the focus back.
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(refused.count(), 2);
    EXPECT_TRUE(test::spinUntil([&] { return edit->hasFocus(); }));

    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_TRUE(other->hasFocus());
    EXPECT_EQ(edit->objectValue(), QVariant(512));
    test::spinFor(30);
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(LineEdit, WithoutFormatterItIsAPlainLineEdit)
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

    // A formatter given later shows the value through it.
    other->setObjectValue(7);
    other->setFormatter(probe);
    EXPECT_EQ(other->text(), "7");
}

TEST_F(LineEdit, FollowsItsFormattersChangesAndAbortsEdits)
{
    QSignalSpy judged(edit, &WQLineEdit::editedTextChanged);
    edit->setObjectValue(5);
    probe->prefix = QStringLiteral("#");
    probe->announceChange();
    EXPECT_EQ(edit->text(), "#5") << "the value shows through the changed formatter";

    QTest::keyClicks(edit, "1x");
    EXPECT_EQ(edit->text(), "#51");
    EXPECT_EQ(judged.count(), 1) << "the refused x changed nothing";
    EXPECT_EQ(judged.at(0).at(0).toString(), "#51");
    probe->prefix = QStringLiteral("N");
    probe->announceChange();
    EXPECT_EQ(edit->text(), "#51") << "what the user is typing stays";

    edit->abortEditing();
    EXPECT_EQ(edit->text(), "N5");
    EXPECT_EQ(edit->selectedText(), "N5");
    EXPECT_FALSE(edit->hasPendingEdit());
    EXPECT_EQ(edit->objectValue(), QVariant(5));

    // A new formatter is followed instead of the old one.
    auto next = std::make_shared<ProbeFormatter>();
    edit->setFormatter(next);
    probe->prefix = QStringLiteral("old");
    probe->announceChange();
    EXPECT_EQ(edit->text(), "5");
}
