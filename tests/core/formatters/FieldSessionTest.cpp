// The toolkit-free part of a formatted field, driven through a fake text
// field that reports its changes the way a toolkit's field does.

#include <WQGeneral/formatters/WQFieldSession.h>

#include "ProbeFormatter.h"
#include "WQTestSupport.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>

using namespace wq;
using test::ProbeFormatter;
using Edit = ProbeFormatter::Edit;

namespace {

// Text and selection, with every change reported to the session as a
// toolkit's signals would report it (also the session's own changes).
class FakeField : public WQFieldSession::Field {
public:
    QString text() const override { return _text; }
    WQRange selectedRange() const override { return _selection; }
    void setText(const QString& text) override
    {
        _text = text;
        _selection = {text.size(), 0};
        session->textChanged();
    }
    void setSelectedRange(WQRange range) override
    {
        const qsizetype location = std::clamp<qsizetype>(range.location, 0, _text.size());
        _selection = {location, std::clamp<qsizetype>(range.length, 0, _text.size() - location)};
        session->selectionChanged();
    }

    // One key press: a character replaces the selection, Backspace deletes;
    // the field's signals come in a toolkit's order.
    void key(QChar character)
    {
        const bool backspace = character == u'\b';
        session->beginEvent(WQFieldSession::keyEvent(backspace ? Qt::Key_Backspace : Qt::Key_unknown, QString(character), {}));
        WQRange removed = _selection;
        if (backspace && removed.length == 0 && removed.location > 0)
            removed = {removed.location - 1, 1};
        const QString inserted = backspace ? QString() : QString(character);
        _text.replace(removed.location, removed.length, inserted);
        _selection = {removed.location + inserted.size(), 0};
        session->textEdited();
        session->textChanged();
        session->selectionChanged();
        session->endEvent();
    }
    void type(const QString& keys)
    {
        for (QChar character : keys)
            key(character);
    }
    void select(qsizetype location, qsizetype length) { setSelectedRange({location, length}); }

    WQFieldSession* session = nullptr;

private:
    QString _text;
    WQRange _selection;
};

class FieldSession : public ::testing::Test {
protected:
    FieldSession() { field.session = &session; }

    std::shared_ptr<ProbeFormatter> probe = std::make_shared<ProbeFormatter>();
    FakeField field;
    WQFieldSession session{field, probe};
    QSignalSpy cleared{&session, &WQFieldSession::refusalCleared};
};

} // namespace

TEST_F(FieldSession, JudgesEachEditWhenItsEventEnds)
{
    // (What the line edit's key test sees of a typed key is not repeated here.)
    field.type("12");
    EXPECT_EQ(field.text(), "12");
    EXPECT_EQ(probe->calls, 2);
    EXPECT_EQ(probe->editor, &session);
    EXPECT_EQ(probe->editorString, "1") << "the field editor holds the text from before the edit";
    EXPECT_NE(WQToolkit::shared().currentEvent().type, WQEditEvent::Type::KeyDown) << "only while judging";
    // (The delete, forward delete and option keys are the line edit's key test's.)
    field.key(u'\b');
    EXPECT_EQ(probe->last, (Edit{"12", {2, 0}, "1", {1, 0}}));
    field.key(u'3');

    // Typing over a selection reports the selection it replaced; nested
    // events are judged once, when the outer one ends.
    field.select(1, 1);
    session.beginEvent(WQFieldSession::keyEvent(Qt::Key_9, QStringLiteral("9"), {}));
    field.key(u'9');
    EXPECT_EQ(probe->last.proposed, "13") << "not judged inside the outer event";
    session.endEvent();
    EXPECT_EQ(probe->last, (Edit{"13", {1, 1}, "19", {2, 0}}));
}

// What the line edit's key test does not reach: a silent refusal and a
// rewrite equal to the proposal.
TEST_F(FieldSession, SilentRefusalsAndEqualRewrites)
{
    QSignalSpy refused{&session, &WQFieldSession::editRefused};
    field.type("4!");
    EXPECT_EQ(field.text(), "4");
    EXPECT_EQ(refused.count(), 0) << "a silent refusal says nothing";
    field.key(u'=');
    EXPECT_EQ(field.text(), "4=") << "a rewrite equal to the proposal is kept";
}

TEST_F(FieldSession, EndingAnEditReadsTheValue)
{
    QSignalSpy values(&session, &WQFieldSession::objectValueChanged);
    QSignalSpy valueRefused(&session, &WQFieldSession::valueRefused);
    session.setObjectValue(5);
    EXPECT_EQ(field.text(), "5");
    EXPECT_FALSE(session.hasPendingEdit());
    EXPECT_TRUE(session.validateEditing()) << "nothing to read";

    // (A value read and one refused with its message: the line edit's test.)
    field.type("y");
    EXPECT_FALSE(session.validateEditing());
    EXPECT_EQ(valueRefused.count(), 1);
    EXPECT_EQ(session.objectValue(), QVariant(5));
    field.key(u'\b');
    EXPECT_EQ(cleared.count(), 1) << "the next edit taken ends the refusal";
    // Program text is no edit, but it is read when editing ends.
    field.setText(QStringLiteral("55"));
    EXPECT_TRUE(session.hasPendingEdit());
    EXPECT_TRUE(session.validateEditing());
    EXPECT_EQ(session.objectValue(), QVariant(55));
    EXPECT_EQ(values.count(), 2);
}

TEST_F(FieldSession, UndoRedoEscapeAndFormatterChanges)
{
    session.setObjectValue(5);
    field.type("1u");
    EXPECT_EQ(field.text(), "51");
    session.undoEdit();
    EXPECT_EQ(field.text(), "5") << "a rewrite to the same text is no step";
    EXPECT_FALSE(session.hasPendingEdit()) << "the value's own text";
    session.redoEdit();
    EXPECT_EQ(field.text(), "51");
    EXPECT_TRUE(session.hasPendingEdit());

    // The formatter's change re-renders only what the user is not typing.
    probe->prefix = QStringLiteral("#");
    probe->announceChange();
    EXPECT_EQ(field.text(), "51");
    EXPECT_TRUE(session.escape());
    EXPECT_EQ(field.text(), "#5");
    EXPECT_EQ(field.selectedRange(), (WQRange{0, 2}));
    EXPECT_FALSE(session.escape()) << "nothing left to give up: the key goes on";
    session.undoEdit();
    EXPECT_EQ(field.text(), "51") << "the abort can be undone";

    // A new formatter is followed instead of the old one.
    session.abortEditing();
    auto next = std::make_shared<ProbeFormatter>();
    session.setFormatter(next);
    EXPECT_EQ(field.text(), "5");
    probe->announceChange();
    EXPECT_EQ(field.text(), "5");
    session.setObjectValue(6);
    EXPECT_FALSE(session.canUndoEdit()) << "a value from the application starts a new history";
}
