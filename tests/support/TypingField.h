#pragma once
// Field editors for formatter tests without widgets. TypingField is a
// scripted text field: each edit is proposed the way a field editor would
// propose it, judged through the formatter contract, and applied as a field
// applies the answer. RecordingEditor only holds a selection that a
// formatter may set. readWith asks a formatter for the value of a text.

#include <WQGeneral/formatters/WQFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>

#include <QString>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>

namespace wq::test {

struct RecordingEditor : WQFieldEditor {
    WQRange range{-1, -1};
    QString text;
    WQRange selectedRange() const override { return range; }
    void setSelectedRange(WQRange r) override { range = r; }
    QString string() const override { return text; }
};

class TypingField : public WQFieldEditor {
public:
    explicit TypingField(WQFormatter& formatter, QString text = QString(), qsizetype caret = -1)
        : _formatter(formatter), _text(std::move(text))
    {
        _selection = {caret < 0 ? _text.size() : caret, 0};
    }

    WQRange selectedRange() const override { return _selection; }
    void setSelectedRange(WQRange range) override { editorSelection = range; }
    QString string() const override { return _text; }
    QString text() const { return _text; }
    qsizetype caret() const { return _selection.location; }

    void select(qsizetype location, qsizetype length) { _selection = {location, length}; }
    void selectAll() { _selection = {0, _text.size()}; }

    // Types each character of keys as one key press, '\b' being Backspace;
    // answers the text.
    QString type(const QString& keys)
    {
        for (QChar key : keys) {
            if (key == u'\b')
                backspace();
            else
                press(QString(key));
        }
        return _text;
    }
    // One key press that produces characters (Alt held with option).
    QString press(const QString& characters, bool option = false)
    {
        _edit(characters, {WQEditEvent::Type::KeyDown, characters, option});
        return _text;
    }
    QString paste(const QString& clip)
    {
        _edit(clip, {});
        return _text;
    }
    // The delete key: the selection, or the character before the caret.
    QString backspace()
    {
        WQRange removed = _selection;
        if (removed.length == 0 && removed.location > 0)
            removed = {removed.location - 1, 1};
        _apply(QString(_text).remove(removed.location, removed.length), {removed.location, 0},
               {WQEditEvent::Type::KeyDown, QString(QChar(WQEditEvent::DeleteCharacter)), false});
        return _text;
    }

    QString lastError;
    bool lastAccepted = false; // the formatter's answer
    bool lastRefused = false;  // refused and not rewritten: the text stayed
    std::optional<WQRange> editorSelection;

private:
    void _edit(const QString& inserted, const WQEditEvent& event)
    {
        QString proposal = _text;
        proposal.replace(_selection.location, _selection.length, inserted);
        _apply(proposal, {_selection.location + inserted.size(), 0}, event);
    }

    void _apply(const QString& proposal, WQRange proposedRange, const WQEditEvent& event)
    {
        QString partial = proposal;
        WQRange range = proposedRange;
        QString error;
        const WQEditScope scope(event, this);
        lastAccepted = _formatter.isPartialStringValid(&partial, &range, _text, _selection, &error);
        lastError = error;
        // A rewrite may read the same as the proposal; the scope tells.
        const bool rewritten = scope.rewritten() || partial != proposal || range != proposedRange;
        lastRefused = !lastAccepted && !rewritten;
        if (lastAccepted) {
            _text = proposal;
            _selection = proposedRange;
        } else if (rewritten) {
            _text = partial;
            _selection = range;
        }
    }

    WQFormatter& _formatter;
    QString _text;
    WQRange _selection;
};

// One scripted edit: start with the caret at caret (-1: the end), press
// keys, expect the text, the caret (-1: not checked), the last key's
// message and whether that key was refused outright.
struct TypingRow {
    QString start;
    qsizetype caret;
    QString keys;
    QString text;
    qsizetype caretAfter = -1;
    QString error = {};
    bool refused = false;
};

inline void checkTyping(WQFormatter& formatter, std::initializer_list<TypingRow> rows)
{
    for (const TypingRow& row : rows) {
        SCOPED_TRACE(QStringLiteral("\"%1\" @%2 + \"%3\"").arg(row.start).arg(row.caret).arg(row.keys).toStdString());
        TypingField field(formatter, row.start, row.caret);
        EXPECT_EQ(field.type(row.keys), row.text);
        if (row.caretAfter >= 0) {
            EXPECT_EQ(field.caret(), row.caretAfter);
        }
        EXPECT_EQ(field.lastError, row.error);
        EXPECT_EQ(field.lastRefused, row.refused);
    }
}

// The message of a key no formatter takes at that place.
inline QString notValid(const QString& key) { return QStringLiteral("\"%1\" is not valid here").arg(key); }

// A formatter's answer for a text: whether it read, what, and its message.
struct Reading {
    bool ok = false;
    QVariant value;
    QString error;
};

// The message place starts as errorBefore, to show whether reading touches it.
inline Reading readWith(const WQFormatter& formatter, const QString& text, const QString& errorBefore = QString())
{
    Reading reading{false, QVariant(), errorBefore};
    reading.ok = formatter.getObjectValue(&reading.value, text, &reading.error);
    return reading;
}

} // namespace wq::test
