#pragma once
/// \class wq::WQCalculateWindowController
/// The pop-up calculator shaped like a paper tape. A calculating money field
/// opens it (through the toolkit) when an operator is typed after a number:
/// the numbers entered so far stand in a column, each operator to the left of
/// the number after it, an editing field takes the next number, and below a
/// separator the running total shows. "=" (at once), Return or Tab (on the
/// next pass of the event loop) and a click elsewhere write the total into the
/// field that opened it, in the money formatter's display, all selected;
/// Escape leaves the field as it was when the calculator opened. An operator
/// typed in the calculator extends it. At most one calculator is open.
///
/// The window lies over the field with its bottom edge on the field's bottom
/// edge, the total where the field's text was, and grows upwards by one row
/// per operator. The field or its window may go away while the calculator is
/// open: the calculator then closes without writing anything.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/calculator/WQCalcWindow.h>
#include <WQGeneral/calculator/WQCalculatorTape.h>
#include <WQGeneral/fields/WQLineEdit.h>

#include <QLineEdit>
#include <QObject>
#include <QPointer>

#include <memory>

namespace wq {

class WQCalculateWindowControllerPrivate;

/// \addtogroup calculator
/// @{

class WQ_WIDGETS_EXPORT WQCalculateWindowController : public QObject {
    Q_OBJECT
public:
    /// Extends the open calculator, or opens one at the focused field when
    /// that field shows values through `formatter`. Always true.
    static bool setUpForMathOperator(const QString& mathOperator, double initialNumber,
                                     const std::shared_ptr<WQFormatter>& formatter);
    /// Closes the open calculator with its total; nothing when none is open.
    static void finishCalculation();
    /// The calculator that is open and not closing, or nullptr.
    static WQCalculateWindowController* openCalculator();

    ~WQCalculateWindowController() override;

    /// The calculator's window.
    WQCalcWindow* window() const;
    /// The field that opened the calculator; null once it is gone.
    QLineEdit* parentControl() const;
    /// The field the next number is typed into.
    WQLineEdit* editingField() const;
    /// The field that shows the running total.
    WQLineEdit* totalField() const;
    /// The numbers and operators so far.
    const WQCalculatorTape& tape() const;
    /// Height of one tape row, taken from the opening field.
    int lineHeight() const;
    /// True once closing has begun.
    bool isClosing() const;

    /// Appends an operator and the number before it; the window is rebuilt
    /// on the next pass of the event loop.
    void addMathOperator(const QString& mathOperator, double number);
    /// The running total, with the editing field's live text as the last
    /// operand (0 when it does not read as a number).
    double calculateTotal() const;
    /// The tape as text, one row a line, the total last ("= $20.00").
    QStringList tapeLines() const;

    /// Close with the total written into the field, or without it.
    void closeAndSetAmount();
    /// Closes and leaves the field as it was.
    void closeAndForgetAmount();

signals:
    /// Each new total shown.
    void totalChanged(double total);
    /// The total was written into the field that opened the calculator (as
    /// text, all selected), just before the calculator closes.
    void amountWritten(double total);

protected:
    /// Watches the editing field's keys (operators, =, Return, Escape, Ctrl+C).
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    WQCalculateWindowController(WQCalcWindow* window, QLineEdit* parent, std::shared_ptr<WQFormatter> formatter,
                                int lineHeight, const QString& mathOperator, double initialNumber);
    static WQCalculateWindowController* _wq_open(const QString& mathOperator, double initialNumber,
                                                 const std::shared_ptr<WQFormatter>& formatter);

    void _wq_setup_window_for_math();
    void _wq_reset_display();
    void _wq_showTotal();
    double _wq_liveOperand() const;
    QString _wq_display(double value) const;
    void _wq_editingEnded();
    void _wq_resignedKey();
    void _wq_copyTape() const;

    Q_DECLARE_PRIVATE_D(_wq_d, WQCalculateWindowController)
    std::unique_ptr<WQCalculateWindowControllerPrivate> _wq_d;
};

/// @}

} // namespace wq
