#include <WQGeneral/calculator/WQCalculateWindowController.h>

#include "WQCalculateWindowController_p.h"

#include <WQGeneral/calculator/WQCalcWindow.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/formatters/WQFormatter.h>
#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/views/WQWindowGeometry.h>

#include "WQCalculatorLayout.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFrame>
#include <QKeyEvent>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <exception>

namespace wq {
namespace {

using calculator::Layout;

QPointer<WQCalculateWindowController>& openSlot()
{
    static QPointer<WQCalculateWindowController> open;
    return open;
}

// The row height: a borderless one-space field sized to fit, plus 2. The
// probe lives in the field's window for a moment so it has that window's
// font and style, which the calculator's rows inherit.
int measureLineHeight(QWidget* window)
{
    QLineEdit probe(window);
    probe.setFrame(false);
    probe.setText(QStringLiteral(" "));
    probe.adjustSize();
    return probe.height() + 2;
}

// Moves a frame just enough to lie on the available part of its screen.
QRect keptOnScreen(QRect frame, const QScreen* screen)
{
    if (!screen)
        return frame;
    const QRect area = screen->availableGeometry();
    frame.moveLeft(std::clamp(frame.left(), area.left(), std::max(area.left(), area.right() + 1 - frame.width())));
    if (frame.bottom() > area.bottom())
        frame.moveBottom(area.bottom());
    if (frame.top() < area.top())
        frame.moveTop(area.top());
    return frame;
}

void setUpRow(QLineEdit* row, const QRect& frame, Qt::Alignment alignment)
{
    row->setFrame(false);
    row->setAutoFillBackground(true);
    row->setBackgroundRole(QPalette::Base);
    row->setAlignment(alignment | Qt::AlignVCenter);
    row->setGeometry(frame);
}

// A row of the tape: shown, selectable with the mouse, never focused, so the
// keyboard stays in the editing field.
void makeReadOnly(QLineEdit* row)
{
    row->setReadOnly(true);
    row->setFocusPolicy(Qt::NoFocus);
}

} // namespace

WQCalculateWindowController* WQCalculateWindowController::openCalculator()
{
    WQCalculateWindowController* open = openSlot();
    return open && !open->_wq_d->closing ? open : nullptr;
}

bool WQCalculateWindowController::setUpForMathOperator(const QString& mathOperator, double initialNumber,
                                                       const std::shared_ptr<WQFormatter>& formatter)
{
    if (WQCalculateWindowController* open = openCalculator())
        open->addMathOperator(mathOperator, initialNumber);
    else
        _wq_open(mathOperator, initialNumber, formatter);
    return true;
}

void WQCalculateWindowController::finishCalculation()
{
    if (WQCalculateWindowController* open = openCalculator())
        open->closeAndSetAmount();
}

WQCalculateWindowController* WQCalculateWindowController::_wq_open(const QString& mathOperator,
                                                                  double initialNumber,
                                                                  const std::shared_ptr<WQFormatter>& formatter)
{
    // The field being edited must still be the one whose formatter asked:
    // the focus may have moved on before this deferred step ran.
    auto* field = qobject_cast<WQLineEdit*>(QApplication::focusWidget());
    if (!field || !formatter || field->formatter() != formatter)
        return nullptr;
    QWidget* opener = field->window();
    const int lineHeight = measureLineHeight(opener);

    // The bottom edge on the field's, 18 to its left, as wide as the field
    // plus the operator column and margin.
    const QPoint bottomLeft = compatibleConvertPointToScreen(
        *opener, field->mapTo(opener, QPoint(-calculator::kLeftOverhang, field->height())));
    const int width = field->width() + calculator::kLeftOverhang;
    const int height = calculator::windowHeight(1, lineHeight);
    const QRect frame(bottomLeft.x(), bottomLeft.y() - height, width, height);

    auto* window = new WQCalcWindow(opener);
    window->setGeometry(keptOnScreen(frame, field->screen()));
    auto* controller = new WQCalculateWindowController(window, field, formatter, lineHeight, mathOperator,
                                                       initialNumber);
    controller->_wq_setup_window_for_math();
    openSlot() = controller;
    window->show();
    window->raise();
    window->activateWindow();
    if (controller->_wq_d->editing_field)
        controller->_wq_d->editing_field->setFocus(Qt::PopupFocusReason);
    return controller;
}

WQCalculateWindowController::WQCalculateWindowController(WQCalcWindow* window, QLineEdit* parent,
                                                         std::shared_ptr<WQFormatter> formatter, int lineHeight,
                                                         const QString& mathOperator, double initialNumber)
    : QObject(window), _wq_d(std::make_unique<WQCalculateWindowControllerPrivate>())
{
    _wq_d->window = window;
    _wq_d->parent_control = parent;
    _wq_d->formatter = std::move(formatter);
    _wq_d->line_height = lineHeight;
    _wq_d->tape.numbers = {initialNumber};
    _wq_d->tape.operators = {mathOperator};
    window->setAccessibleName(WQStrings::tr("Calculator"));
    window->setAccessibleDescription(WQStrings::tr("Type a number and an operator for the next; = or Return "
                                                   "writes the total into the field, Escape leaves the field as it was"));
    connect(window, &WQCalcWindow::resignedKey, this, &WQCalculateWindowController::_wq_resignedKey);
    // A field that goes away takes its calculation with it.
    // (It is only a QObject by now: the guard is cleared before anything
    // looks at it.)
    connect(parent, &QObject::destroyed, this, [this] {
        _wq_d->parent_control.clear();
        closeAndForgetAmount();
    });
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            _wq_resignedKey();
    });
}

WQCalculateWindowController::~WQCalculateWindowController() = default;

QString WQCalculateWindowController::_wq_display(double value) const
{
    try {
        return _wq_d->formatter->stringForObjectValue(value).value_or(QString());
    } catch (const std::exception&) {
        return QString();
    }
}

void WQCalculateWindowController::_wq_setup_window_for_math()
{
    WQCalcWindow* window = _wq_d->window;
    const Layout layout{window->width(), window->height(), _wq_d->line_height};
    const int n = int(_wq_d->tape.operators.size());

    for (int i = 0; i < n; ++i) {
        auto* number = new WQLineEdit(_wq_d->formatter, window);
        setUpRow(number, layout.number(i), Qt::AlignRight);
        makeReadOnly(number);
        number->setObjectValue(_wq_d->tape.numbers.value(i));
        number->setAccessibleName(WQFormatTemplate(WQStrings::tr("Number %@"), {QString::number(i + 1)}));
        number->show();

        auto* mathOperator = new QLineEdit(_wq_d->tape.operators[i], window);
        setUpRow(mathOperator, layout.mathOperator(i), Qt::AlignLeft);
        makeReadOnly(mathOperator);
        mathOperator->setAttribute(Qt::WA_TransparentForMouseEvents);
        mathOperator->setAccessibleName(WQFormatTemplate(WQStrings::tr("Operator %@"), {_wq_d->tape.operators[i]}));
        mathOperator->show();
    }

    auto* editing = new WQLineEdit(_wq_d->formatter, window);
    setUpRow(editing, layout.editingField(n), Qt::AlignRight);
    editing->setObjectValue(0.0);
    editing->setAccessibleName(WQStrings::tr("Next number"));
    editing->installEventFilter(this);
    connect(editing, &WQLineEdit::editedTextChanged, this, [this, editing] {
        if (!_wq_d->closing && editing == _wq_d->editing_field)
            _wq_showTotal();
    });
    editing->show();
    _wq_d->editing_field = editing;

    auto* total = new WQLineEdit(_wq_d->formatter, window);
    setUpRow(total, layout.total(), Qt::AlignRight);
    makeReadOnly(total);
    total->setAccessibleName(WQStrings::tr("Total"));
    total->show();
    _wq_d->total_field = total;

    auto* separator = new QFrame(window);
    separator->setFrameShape(QFrame::HLine);
    separator->setFrameShadow(QFrame::Plain);
    separator->setForegroundRole(QPalette::Mid);
    separator->setGeometry(layout.separator());
    separator->show();

    window->outline()->raise();
    // The new field is typed over, as a field taking the focus is.
    editing->setFocus(Qt::PopupFocusReason);
    editing->selectAll();
    _wq_showTotal();
}

double WQCalculateWindowController::_wq_liveOperand() const
{
    const WQLineEdit* editing = _wq_d->editing_field;
    if (!editing || !_wq_d->window || _wq_d->window->focusWidget() != editing)
        return 0;
    QVariant value;
    try {
        if (!_wq_d->formatter->getObjectValue(&value, editing->string(), nullptr))
            return 0;
    } catch (const std::exception&) {
        return 0;
    }
    bool ok = false;
    const double operand = value.toDouble(&ok);
    return ok ? operand : 0;
}

double WQCalculateWindowController::calculateTotal() const
{
    return _wq_d->tape.total(_wq_liveOperand());
}

QStringList WQCalculateWindowController::tapeLines() const
{
    const QString live = _wq_d->editing_field ? _wq_d->editing_field->text() : QString();
    return _wq_d->tape.lines(live, _wq_liveOperand(), [this](double value) { return _wq_display(value); });
}

void WQCalculateWindowController::_wq_showTotal()
{
    if (!_wq_d->total_field)
        return;
    const double total = calculateTotal();
    _wq_d->total_field->setObjectValue(total);
    // Screen readers often skip pop-ups: the focused field carries the total.
    const QString spoken = WQFormatTemplate(WQStrings::tr("Total %@"), {_wq_d->total_field->text()});
    if (_wq_d->editing_field)
        _wq_d->editing_field->setAccessibleDescription(spoken);
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent change(_wq_d->total_field.data(), total);
        QAccessible::updateAccessibility(&change);
    }
    emit totalChanged(total);
}

void WQCalculateWindowController::addMathOperator(const QString& mathOperator, double number)
{
    _wq_d->tape.operators.append(mathOperator);
    _wq_d->tape.numbers.append(number);
    QTimer::singleShot(0, this, &WQCalculateWindowController::_wq_reset_display);
}

void WQCalculateWindowController::_wq_reset_display()
{
    if (_wq_d->closing || !_wq_d->window)
        return;
    _wq_d->changing = true;
    const QList<QWidget*> rows = _wq_d->window->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* row : rows)
        if (row != _wq_d->window->outline())
            delete row;

    // Taller by the new row, the bottom edge where it was.
    QRect frame = _wq_d->window->geometry();
    const int bottom = frame.bottom();
    frame.setHeight(calculator::windowHeight(int(_wq_d->tape.operators.size()), _wq_d->line_height));
    frame.moveBottom(bottom);
    _wq_d->window->setGeometry(keptOnScreen(frame, _wq_d->window->screen()));

    _wq_setup_window_for_math();
    _wq_d->changing = false;
}

void WQCalculateWindowController::_wq_editingEnded()
{
    if (_wq_d->changing || _wq_d->closing)
        return;
    _wq_showTotal();
    QTimer::singleShot(0, this, [this] {
        if (!_wq_d->closing)
            closeAndSetAmount();
    });
}

void WQCalculateWindowController::_wq_resignedKey()
{
    if (_wq_d->changing || _wq_d->closing)
        return;
    closeAndSetAmount();
}

void WQCalculateWindowController::closeAndSetAmount()
{
    if (_wq_d->closing)
        return;
    _wq_d->closing = true;
    const double total = calculateTotal();
    const QString text = _wq_display(total);
    if (QLineEdit* field = _wq_d->parent_control) {
        field->setText(text);
        field->setSelection(0, int(text.size()));
        emit amountWritten(total);
    }
    closeAndForgetAmount();
}

void WQCalculateWindowController::closeAndForgetAmount()
{
    _wq_d->closing = true;
    if (_wq_d->parent_control)
        disconnect(_wq_d->parent_control, nullptr, this, nullptr);
    if (WQCalcWindow* window = _wq_d->window) {
        window->setClosingByItself();
        window->close();
    }
}

void WQCalculateWindowController::_wq_copyTape() const
{
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(tapeLines().join(u'\n') + u'\n');
}

bool WQCalculateWindowController::eventFilter(QObject* watched, QEvent* event)
{
    // The type first: a field being destroyed still sends focus events, and
    // must not be looked at as a line edit then.
    if (event->type() != QEvent::KeyPress || watched != _wq_d->editing_field.get())
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (key->matches(QKeySequence::Cancel)) {
        closeAndForgetAmount();
        return true;
    }
    if (key->matches(QKeySequence::Copy)) {
        _wq_copyTape();
        return true;
    }
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        _wq_editingEnded();
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

WQCalcWindow* WQCalculateWindowController::window() const
{
    Q_D(const WQCalculateWindowController);
    return d->window;
}

QLineEdit* WQCalculateWindowController::parentControl() const
{
    Q_D(const WQCalculateWindowController);
    return d->parent_control;
}

WQLineEdit* WQCalculateWindowController::editingField() const
{
    Q_D(const WQCalculateWindowController);
    return d->editing_field;
}

WQLineEdit* WQCalculateWindowController::totalField() const
{
    Q_D(const WQCalculateWindowController);
    return d->total_field;
}

const WQCalculatorTape& WQCalculateWindowController::tape() const
{
    Q_D(const WQCalculateWindowController);
    return d->tape;
}

int WQCalculateWindowController::lineHeight() const
{
    Q_D(const WQCalculateWindowController);
    return d->line_height;
}

bool WQCalculateWindowController::isClosing() const
{
    Q_D(const WQCalculateWindowController);
    return d->closing;
}

} // namespace wq
