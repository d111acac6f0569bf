// The toolkit's side of the bridge from core for Qt Quick, registered when
// the program starts: every application that links WQGeneral::Quick has it
// (the build links this file whole, although nothing calls into it by name).
// Beside the widgets' toolkit it answers while a Qt Quick window has the focus.

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/quick/WQQuickCalculator.h>
#include <WQGeneral/quick/WQQuickFormattedField.h>

#include <QGuiApplication>
#include <QQuickWindow>

namespace wq {
namespace {

bool hasGuiApplication() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }

class QuickToolkit final : public WQToolkit {
public:
    QuickToolkit() { WQToolkit::registerToolkit(*this); }
    ~QuickToolkit() override { WQToolkit::unregisterToolkit(*this); }

    bool ownsKeyWindow() const override
    {
        return hasGuiApplication() && qobject_cast<QQuickWindow*>(QGuiApplication::focusWindow());
    }

    // Outside a field's judgement no key is being judged; the field being
    // edited is the focused one.
    const WQEditEvent& currentEvent() const override { return _wq_noEvent; }
    WQFieldEditor* keyFieldEditor() const override
    {
        if (!hasGuiApplication())
            return nullptr;
        WQQuickFormattedField* field = WQQuickFormattedField::of(QGuiApplication::focusObject());
        return field ? &field->session() : nullptr;
    }
    void noteRewrite() override {}

    void setUpForMathOperator(const QString& mathOperator, double initialNumber,
                              const std::shared_ptr<WQFormatter>& formatter) override
    {
        if (hasGuiApplication())
            WQQuickCalculator::setUpForMathOperator(mathOperator, initialNumber, formatter);
    }
    void finishCalculation() override
    {
        if (hasGuiApplication())
            WQQuickCalculator::finishCalculation();
    }

private:
    const WQEditEvent _wq_noEvent;
};

const QuickToolkit registered;

} // namespace
} // namespace wq
