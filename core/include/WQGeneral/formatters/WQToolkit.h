#pragma once
/// \class wq::WQToolkit
/// The one bridge from core to the toolkit. Core never sees a widget: what a
/// formatter must ask of the toolkit (the edit it is judging, the calculator
/// of the key window) goes through WQToolkit. Each toolkit layer
/// (WQGeneral::Widgets, WQGeneral::Quick) registers its implementation when
/// the program starts; an application may link both, and the one that owns
/// the key window answers. Without any the process has no windows, nothing is
/// being edited and no calculator opens.
///
/// Code that drives a formatter itself (a field, the wq tool, a test) states
/// the edit with a WQEditScope around the call.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QString>

#include <memory>

namespace wq {

/// \addtogroup formatters
/// @{

class WQFormatter;

/// The key event being handled while an edit is judged.
struct WQ_CORE_EXPORT WQEditEvent {
    /// Whether a key is being handled.
    enum class Type { None, KeyDown };
    static constexpr char16_t DeleteCharacter = 127; ///< Backspace here

    /// KeyDown while a key press is handled, else None.
    Type type = Type::None;
    QString characters;          ///< what the key produced; "\x7f" for Backspace
    bool optionKeyDown = false;  ///< Alt is held

    /// True while Backspace is being handled.
    bool isDeleteKeyDown() const
    {
        return type == Type::KeyDown && !characters.isEmpty() && characters.front() == QChar(DeleteCharacter);
    }
};

/// The text editor of the field being edited: its selection can be read and
/// set. While an edit is judged, its string is still the text from before the
/// edit: the proposal is the formatter's to accept.
class WQ_CORE_EXPORT WQFieldEditor {
public:
    virtual ~WQFieldEditor() = default;
    /// The editor's selection (UTF-16 positions).
    virtual WQRange selectedRange() const = 0;
    /// Sets the editor's selection; a formatter that rewrites may place the caret this way.
    virtual void setSelectedRange(WQRange range) = 0;
    /// The editor's text; while an edit is judged, the text from before it.
    virtual QString string() const = 0;
};

class WQ_CORE_EXPORT WQToolkit {
public:
    virtual ~WQToolkit() = default;

    /// The edit being judged. Outside one: an event of Type::None and no editor.
    virtual const WQEditEvent& currentEvent() const = 0;
    /// The editor of the field being edited: during a keystroke's judgement
    /// the one judged, otherwise the focused field, as a key window's field
    /// editor outlives each keystroke; nullptr when no field is edited.
    virtual WQFieldEditor* keyFieldEditor() const = 0;
    /// The formatter's verdict that it stored a rewrite, which may read the
    /// same as the proposal (see WQFormatter::rewriteProposal).
    virtual void noteRewrite() = 0;

    /// The key window's calculator. Extends the open calculator when it is
    /// the key window, otherwise opens one at the field being edited with this
    /// number and operator; nothing happens when no field is being edited.
    virtual void setUpForMathOperator(const QString& mathOperator, double initialNumber,
                                      const std::shared_ptr<WQFormatter>& formatter) = 0;
    /// Closes the key window's calculator, writing its total into the field
    /// that opened it; nothing when the key window is not a calculator.
    virtual void finishCalculation() = 0;

    /// True when the key window (the one with the focused field) is this
    /// toolkit's; asked when more than one toolkit is registered.
    virtual bool ownsKeyWindow() const { return true; }

    /// The toolkit in force: the innermost edit scope, else the installed
    /// toolkit, else the first registered one that owns the key window (the
    /// first registered when none does), else one without windows.
    static WQToolkit& shared();
    /// Installs a toolkit that answers before every registered one (not
    /// owned; it must outlive its installation) and answers the one it
    /// replaces. nullptr goes back to the registered toolkits.
    static WQToolkit* install(WQToolkit* toolkit);
    /// Adds a toolkit layer's implementation (not owned) to those asked in
    /// turn; registering one twice changes nothing.
    static void registerToolkit(WQToolkit& toolkit);
    /// Takes a registered toolkit out again, as it goes away.
    static void unregisterToolkit(WQToolkit& toolkit);
};

/// States one edit for the formatter calls inside its scope: the toolkit then
/// answers this event and editor and keeps the verdict; calculator requests go
/// on to the toolkit the scope covers. Scopes nest.
class WQ_CORE_EXPORT WQEditScope final : private WQToolkit {
public:
    /// States event and editor (which may be nullptr) for the calls made while the scope lives.
    explicit WQEditScope(WQEditEvent event, WQFieldEditor* editor = nullptr);
    ~WQEditScope() override;
    WQEditScope(const WQEditScope&) = delete;
    WQEditScope& operator=(const WQEditScope&) = delete;

    /// True once a formatter inside the scope marked its answer as a rewrite.
    bool rewritten() const noexcept { return _wq_rewritten; }

private:
    const WQEditEvent& currentEvent() const override { return _wq_event; }
    WQFieldEditor* keyFieldEditor() const override;
    void noteRewrite() override { _wq_rewritten = true; }
    void setUpForMathOperator(const QString& mathOperator, double initialNumber,
                              const std::shared_ptr<WQFormatter>& formatter) override;
    void finishCalculation() override;

    WQToolkit* _wq_outer;
    WQToolkit* _wq_outerScope; ///< null when the scope is outermost
    WQEditEvent _wq_event;
    WQFieldEditor* _wq_editor;
    bool _wq_rewritten = false;
};

/// @}

} // namespace wq
