#pragma once
/// \class wq::WQQuickCalculator
/// The pop-up calculator for Qt Quick: a paper tape in a Popup beside the
/// calculating money field that opened it (CalculatorPopup.qml). The numbers
/// entered so far stand in a column, each operator to the left of the number
/// after it; an editing field takes the next number, and below a separator
/// the running total shows, strictly from left to right (2 + 3 * 4 = 20).
/// "=" (at once), Return or Tab (on the next pass of the event loop) and a
/// click outside write the total into the field, in the money formatter's
/// display, all selected; Escape leaves the field as it was when the
/// calculator opened. An operator typed in the calculator extends it; Ctrl+C
/// copies the tape. At most one calculator is open.
///
/// The toolkit opens it: a calculating money formatter asks for it when an
/// operator follows a number. The pop-up lies over the field with its bottom
/// edge on the field's and grows upwards by one row per operator.

#include <WQGeneral/WQQuickExport.h>
#include <WQGeneral/calculator/WQCalculatorTape.h>
#include <WQGeneral/formatters/WQFormatter.h>

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QStringList>
#include <QVariantMap>

#include <memory>

namespace wq {

class WQQuickCalculatorPrivate;

/// \addtogroup quick
/// @{

class WQQuickFormattedField;

class WQ_QUICK_EXPORT WQQuickCalculator : public QObject {
    Q_OBJECT
    /// The tape's numbers, as the money formatter shows them.
    Q_PROPERTY(QStringList numbers READ numbers NOTIFY tapeChanged)
    /// The operator before each number after the first; the last one waits for the editing field.
    Q_PROPERTY(QStringList operators READ operators NOTIFY tapeChanged)
    /// The running total, as the money formatter shows it.
    Q_PROPERTY(QString totalText READ totalText NOTIFY totalChanged)
    /// "Total <total>", for screen readers, which often skip pop-ups.
    Q_PROPERTY(QString spokenTotal READ spokenTotal NOTIFY totalChanged)
    /// The accessible names, translated: calculator, nextNumber, total.
    Q_PROPERTY(QVariantMap labels READ labels CONSTANT)
public:
    /// Extends the open calculator, or opens one at the focused field when
    /// that field shows values through formatter. Always true.
    static bool setUpForMathOperator(const QString& mathOperator, double initialNumber,
                                     const std::shared_ptr<WQFormatter>& formatter);
    /// Closes the open calculator with its total; nothing when none is open.
    static void finishCalculation();
    /// The calculator that is open and not closing, or nullptr.
    static WQQuickCalculator* openCalculator();

    ~WQQuickCalculator() override;

    /// The pop-up (a Qt Quick Controls Popup).
    QObject* popup() const;
    /// The field that opened the calculator; null once it is gone.
    QQuickItem* parentControl() const;
    /// The field the next number is typed into.
    QQuickItem* editingField() const;
    /// The numbers and operators so far.
    const WQCalculatorTape& tape() const;
    /// True once closing has begun.
    bool isClosing() const;

    /// The tape's numbers as shown.
    QStringList numbers() const;
    /// The tape's operators.
    QStringList operators() const;
    /// The running total as shown.
    QString totalText() const;
    /// "Total <total>".
    QString spokenTotal() const;
    /// The translated accessible names.
    QVariantMap labels() const;

    /// Appends an operator and the number before it; the pop-up grows on the
    /// next pass of the event loop.
    void addMathOperator(const QString& mathOperator, double number);
    /// The running total, with the editing field's live text as the last
    /// operand (0 when it does not read as a number).
    double calculateTotal() const;
    /// The tape as text, one row a line, the total last ("= $20.00").
    QStringList tapeLines() const;

    /// Closes with the total written into the field, all selected.
    Q_INVOKABLE void closeAndSetAmount();
    /// Closes and leaves the field as it was.
    Q_INVOKABLE void closeAndForgetAmount();
    /// Puts the tape on the clipboard, one row a line.
    Q_INVOKABLE void copyTape() const;

signals:
    /// A number and operator were added.
    void tapeChanged();
    /// Each new total shown.
    void totalChanged(double total);

protected:
    /// Watches the editing field's keys (Escape, Ctrl+C, Return, Tab).
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    WQQuickCalculator(QQuickItem* parent, std::shared_ptr<WQFormatter> formatter, const QString& mathOperator,
                      double initialNumber);
    static WQQuickCalculator* _wq_open(const QString& mathOperator, double initialNumber,
                                       const std::shared_ptr<WQFormatter>& formatter);

    bool _wq_makePopup();
    void _wq_startEditing();
    void _wq_reset_display();
    void _wq_showTotal();
    double _wq_liveOperand() const;
    QString _wq_display(double value) const;
    WQQuickFormattedField* _wq_editingDriver() const;
    void _wq_editingEnded();
    void _wq_resignedKey();

    Q_DECLARE_PRIVATE_D(_wq_d, WQQuickCalculator)
    std::unique_ptr<WQQuickCalculatorPrivate> _wq_d;
};

/// @}

} // namespace wq
