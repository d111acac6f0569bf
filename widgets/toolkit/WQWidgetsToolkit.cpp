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
    WidgetsToolkit() { _wq_replaced = WQToolkit::install(this); }
    ~WidgetsToolkit() override
    {
        if (&WQToolkit::shared() == this)
            WQToolkit::install(_wq_replaced);
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
    WQToolkit* _wq_replaced = nullptr;
};

const WidgetsToolkit registered;

} // namespace
} // namespace wq
