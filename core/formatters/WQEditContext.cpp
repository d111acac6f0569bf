#include <WQGeneral/formatters/WQEditContext.h>

namespace wq {
namespace {

WQEditEvent& eventSlot()
{
    static WQEditEvent event;
    return event;
}

WQFieldEditor*& editorSlot()
{
    static WQFieldEditor* editor = nullptr;
    return editor;
}

bool& rewriteSlot()
{
    static bool rewritten = false;
    return rewritten;
}

} // namespace

const WQEditEvent& WQEditContext::currentEvent() { return eventSlot(); }
void WQEditContext::setCurrentEvent(const WQEditEvent& event) { eventSlot() = event; }
WQFieldEditor* WQEditContext::keyFieldEditor() { return editorSlot(); }
void WQEditContext::setKeyFieldEditor(WQFieldEditor* editor) { editorSlot() = editor; }

void WQEditContext::noteRewrite() { rewriteSlot() = true; }

bool WQEditContext::takeRewriteNote()
{
    const bool rewritten = rewriteSlot();
    rewriteSlot() = false;
    return rewritten;
}

WQEditScope::WQEditScope(const WQEditEvent& event, WQFieldEditor* editor)
    : _wq_previousEvent(eventSlot()), _wq_previousEditor(editorSlot()), _wq_setEditor(editor != nullptr)
{
    eventSlot() = event;
    if (editor)
        editorSlot() = editor;
}

WQEditScope::~WQEditScope()
{
    eventSlot() = _wq_previousEvent;
    if (_wq_setEditor)
        editorSlot() = _wq_previousEditor;
}

} // namespace wq
