#pragma once
// What a formatter may learn about the edit it is judging, without knowing
// the toolkit: the key event being handled and the focused field's editor.
// The widgets layer fills these in; core tests set them directly.

#include <WQGeneral/platform/WQTypes.h>

#include <QString>

namespace wq {

struct WQEditEvent {
    enum class Type { None, KeyDown };
    static constexpr char16_t DeleteCharacter = 127; // Backspace here

    Type type = Type::None;
    QString characters;          // what the key produced; "\x7f" for Backspace
    bool optionKeyDown = false;  // Alt

    bool isDeleteKeyDown() const
    {
        return type == Type::KeyDown && !characters.isEmpty() && characters.front() == QChar(DeleteCharacter);
    }
};

// The text editor of the focused field: its selection can be read and set.
class WQFieldEditor {
public:
    virtual ~WQFieldEditor() = default;
    virtual WQRange selectedRange() const = 0;
    virtual void setSelectedRange(WQRange range) = 0;
    virtual QString text() const = 0;
};

class WQEditContext {
public:
    static const WQEditEvent& currentEvent();
    static void setCurrentEvent(const WQEditEvent& event);

    // nullptr when no field is being edited.
    static WQFieldEditor* keyFieldEditor();
    static void setKeyFieldEditor(WQFieldEditor* editor);

    // Set by WQFormatter::rewriteProposal; a field clears it before it asks a
    // formatter and reads it afterwards.
    static void noteRewrite();
    static bool takeRewriteNote();
};

// Sets the current event (and optionally the field editor) for one scope and
// restores the previous ones afterwards.
class WQEditScope {
public:
    explicit WQEditScope(const WQEditEvent& event, WQFieldEditor* editor = nullptr);
    ~WQEditScope();
    WQEditScope(const WQEditScope&) = delete;
    WQEditScope& operator=(const WQEditScope&) = delete;

private:
    WQEditEvent _wq_previousEvent;
    WQFieldEditor* _wq_previousEditor;
    bool _wq_setEditor;
};

} // namespace wq
