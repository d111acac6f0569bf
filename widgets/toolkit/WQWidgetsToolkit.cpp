// The toolkit's side of the bridge from core, registered when the program
// starts: every application that links WQGeneral::Widgets has it (the build
// links this file whole, although nothing calls into it by name).

#include <WQGeneral/calculator/WQCalculateWindowController.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/formatters/WQToolkit.h>

#include <QApplication>

namespace wq {
namespace {

class WidgetsToolkit final : public WQToolkit {
public:
    WidgetsToolkit() { WQToolkit::registerToolkit(*this); }
    ~WidgetsToolkit() override { WQToolkit::unregisterToolkit(*this); }

    // A widget has the focus, or the calculator's pop-up is up.
    bool ownsKeyWindow() const override
    {
        return qobject_cast<QApplication*>(QCoreApplication::instance())
            && (QApplication::focusWidget() || QApplication::activePopupWidget());
    }

    // Outside a field's judgement no key is being judged; the field being
    // edited is the focused one.
    const WQEditEvent& currentEvent() const override { return _wq_noEvent; }
    WQFieldEditor* keyFieldEditor() const override
    {
        if (!QApplication::instance())
            return nullptr;
        return qobject_cast<WQLineEdit*>(QApplication::focusWidget());
    }
    void noteRewrite() override {}

    void setUpForMathOperator(const QString& mathOperator, double initialNumber,
                              const std::shared_ptr<WQFormatter>& formatter) override
    {
        if (qobject_cast<QApplication*>(QCoreApplication::instance()))
            WQCalculateWindowController::setUpForMathOperator(mathOperator, initialNumber, formatter);
    }
    void finishCalculation() override
    {
        if (qobject_cast<QApplication*>(QCoreApplication::instance()))
            WQCalculateWindowController::finishCalculation();
    }

private:
    const WQEditEvent _wq_noEvent;
};

const WidgetsToolkit registered;

} // namespace
} // namespace wq
