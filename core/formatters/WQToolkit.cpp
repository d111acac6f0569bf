#include <WQGeneral/formatters/WQToolkit.h>

#include <algorithm>
#include <vector>

namespace wq {
namespace {

// No windows: nothing is edited and there is no calculator to open.
class WindowlessToolkit final : public WQToolkit {
public:
    const WQEditEvent& currentEvent() const override { return _noEvent; }
    WQFieldEditor* keyFieldEditor() const override { return nullptr; }
    void noteRewrite() override {}
    void setUpForMathOperator(const QString&, double, const std::shared_ptr<WQFormatter>&) override {}
    void finishCalculation() override {}

private:
    const WQEditEvent _noEvent{};
};

WQToolkit*& installedSlot()
{
    static WQToolkit* installed = nullptr;
    return installed;
}

std::vector<WQToolkit*>& registered()
{
    static std::vector<WQToolkit*> toolkits;
    return toolkits;
}

WQToolkit*& scopeSlot()
{
    static WQToolkit* innermost = nullptr;
    return innermost;
}

} // namespace

WQToolkit& WQToolkit::shared()
{
    if (WQToolkit* scope = scopeSlot())
        return *scope;
    if (WQToolkit* installed = installedSlot())
        return *installed;
    const std::vector<WQToolkit*>& toolkits = registered();
    if (toolkits.size() > 1) {
        const auto owner = std::find_if(toolkits.begin(), toolkits.end(),
                                        [](const WQToolkit* toolkit) { return toolkit->ownsKeyWindow(); });
        if (owner != toolkits.end())
            return **owner;
    }
    if (!toolkits.empty())
        return *toolkits.front();
    static WindowlessToolkit windowless;
    return windowless;
}

WQToolkit* WQToolkit::install(WQToolkit* toolkit)
{
    WQToolkit* previous = installedSlot();
    installedSlot() = toolkit;
    return previous;
}

void WQToolkit::registerToolkit(WQToolkit& toolkit)
{
    std::vector<WQToolkit*>& toolkits = registered();
    if (std::find(toolkits.begin(), toolkits.end(), &toolkit) == toolkits.end())
        toolkits.push_back(&toolkit);
}

void WQToolkit::unregisterToolkit(WQToolkit& toolkit)
{
    std::erase(registered(), &toolkit);
}

WQEditScope::WQEditScope(WQEditEvent event, WQFieldEditor* editor)
    : _wq_outer(&WQToolkit::shared()), _wq_outerScope(scopeSlot()), _wq_event(std::move(event)), _wq_editor(editor)
{
    scopeSlot() = this;
}

WQEditScope::~WQEditScope() { scopeSlot() = _wq_outerScope; }

WQFieldEditor* WQEditScope::keyFieldEditor() const
{
    return _wq_editor ? _wq_editor : _wq_outer->keyFieldEditor();
}

void WQEditScope::setUpForMathOperator(const QString& mathOperator, double initialNumber,
                                       const std::shared_ptr<WQFormatter>& formatter)
{
    _wq_outer->setUpForMathOperator(mathOperator, initialNumber, formatter);
}

void WQEditScope::finishCalculation() { _wq_outer->finishCalculation(); }

} // namespace wq
