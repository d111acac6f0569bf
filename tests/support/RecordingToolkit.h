#pragma once
// A toolkit installed for one scope: it records what core asks of the
// toolkit's calculator and answers a settable key field editor.

#include <WQGeneral/formatters/WQToolkit.h>

#include <QString>
#include <QStringList>

#include <memory>

namespace wq::test {

class RecordingToolkit : public WQToolkit {
public:
    RecordingToolkit() : _replaced(WQToolkit::install(this)) {}
    ~RecordingToolkit() override { WQToolkit::install(_replaced); }
    RecordingToolkit(const RecordingToolkit&) = delete;
    RecordingToolkit& operator=(const RecordingToolkit&) = delete;

    const WQEditEvent& currentEvent() const override { return _none; }
    WQFieldEditor* keyFieldEditor() const override { return focused; }
    void noteRewrite() override { ++rewrites; }
    void setUpForMathOperator(const QString& op, double number, const std::shared_ptr<WQFormatter>& f) override
    {
        requests << op + u' ' + QString::number(number);
        formatter = f;
    }
    void finishCalculation() override { requests << QStringLiteral("="); }

    WQFieldEditor* focused = nullptr;
    int rewrites = 0;
    QStringList requests; // "<operator> <number>" and "="
    std::shared_ptr<WQFormatter> formatter;

private:
    const WQEditEvent _none{};
    WQToolkit* _replaced;
};

} // namespace wq::test
