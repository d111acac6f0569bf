#include <WQGeneral/quick/WQQuickCalculator.h>

#include "WQQuickCalculator_p.h"

#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/quick/WQQuickFormattedField.h>

#include "detail/WQModuleComponent.h"
#include "detail/WQSignalRelay.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTimer>

#include <exception>

namespace wq {
namespace {

QPointer<WQQuickCalculator>& openSlot()
{
    static QPointer<WQQuickCalculator> open;
    return open;
}

} // namespace

WQQuickCalculator* WQQuickCalculator::openCalculator()
{
    WQQuickCalculator* open = openSlot();
    return open && !open->_wq_d->closing ? open : nullptr;
}

bool WQQuickCalculator::setUpForMathOperator(const QString& mathOperator, double initialNumber,
                                             const std::shared_ptr<WQFormatter>& formatter)
{
    if (WQQuickCalculator* open = openCalculator())
        open->addMathOperator(mathOperator, initialNumber);
    else
        _wq_open(mathOperator, initialNumber, formatter);
    return true;
}

void WQQuickCalculator::finishCalculation()
{
    if (WQQuickCalculator* open = openCalculator())
        open->closeAndSetAmount();
}

WQQuickCalculator* WQQuickCalculator::_wq_open(const QString& mathOperator, double initialNumber,
                                               const std::shared_ptr<WQFormatter>& formatter)
{
    // The field being edited must still be the one whose formatter asked:
    // the focus may have moved on before this deferred step ran.
    auto* field = qobject_cast<QQuickItem*>(QGuiApplication::focusObject());
    const WQQuickFormattedField* driver = WQQuickFormattedField::of(field);
    if (!driver || !formatter || driver->formatter() != formatter || !qmlEngine(field) || !field->window())
        return nullptr;
    auto* calculator = new WQQuickCalculator(field, formatter, mathOperator, initialNumber);
    if (!calculator->_wq_makePopup()) {
        delete calculator;
        return nullptr;
    }
    openSlot() = calculator;
    QMetaObject::invokeMethod(calculator->_wq_d->popup, "open");
    calculator->_wq_startEditing();
    return calculator;
}

WQQuickCalculator::WQQuickCalculator(QQuickItem* parent, std::shared_ptr<WQFormatter> formatter,
                                     const QString& mathOperator, double initialNumber)
    : QObject(parent->window()), _wq_d(std::make_unique<WQQuickCalculatorPrivate>())
{
    _wq_d->parent_control = parent;
    _wq_d->formatter = std::move(formatter);
    _wq_d->tape.numbers = {initialNumber};
    _wq_d->tape.operators = {mathOperator};
    // A field that goes away takes its calculation with it.
    connect(parent, &QObject::destroyed, this, [this] {
        _wq_d->parent_control.clear();
        closeAndForgetAmount();
    });
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            _wq_resignedKey();
    });
}

WQQuickCalculator::~WQQuickCalculator() = default;

bool WQQuickCalculator::_wq_makePopup()
{
    QObject* popup = detail::createModuleObject(*qmlEngine(_wq_d->parent_control), "CalculatorPopup", this,
                                                [this](QObject& made) {
                                                    made.setProperty("calculator", QVariant::fromValue<QObject*>(this));
                                                    made.setProperty("parent",
                                                                     QVariant::fromValue(_wq_d->parent_control.data()));
                                                });
    if (!popup)
        return false;
    _wq_d->popup = popup;

    _wq_d->editing_field = popup->findChild<QQuickItem*>(QStringLiteral("editingField"));
    WQQuickFormattedField* editing = _wq_editingDriver();
    if (!editing)
        return false;
    editing->setFormatter(_wq_d->formatter);
    _wq_d->editing_field->installEventFilter(this);
    connect(editing, &WQQuickFormattedField::editedTextChanged, this, [this] {
        if (!_wq_d->closing)
            _wq_showTotal();
    });
    // A click outside closes the pop-up: the calculator loses key status.
    auto* relay = new detail::WQSignalRelay(this);
    relay->relay(popup, "closed()", [this] { _wq_resignedKey(); });
    return true;
}

WQQuickFormattedField* WQQuickCalculator::_wq_editingDriver() const
{
    return WQQuickFormattedField::of(_wq_d->editing_field);
}

// The editing field starts at 0, all selected so that typing replaces it.
void WQQuickCalculator::_wq_startEditing()
{
    if (WQQuickFormattedField* editing = _wq_editingDriver()) {
        editing->setValue(0.0);
        editing->session().setSelectedRange({0, editing->session().string().size()});
        _wq_d->editing_field->forceActiveFocus(Qt::PopupFocusReason);
    }
    _wq_showTotal();
}

QString WQQuickCalculator::_wq_display(double value) const
{
    try {
        return _wq_d->formatter->stringForObjectValue(value).value_or(QString());
    } catch (const std::exception&) {
        return QString();
    }
}

QStringList WQQuickCalculator::numbers() const
{
    QStringList shown;
    for (double number : std::as_const(_wq_d->tape.numbers))
        shown << _wq_display(number);
    return shown;
}

QString WQQuickCalculator::spokenTotal() const
{
    return WQFormatTemplate(WQStrings::tr("Total %@"), {totalText()});
}

QVariantMap WQQuickCalculator::labels() const
{
    return {{QStringLiteral("calculator"), WQStrings::tr("Calculator")},
            {QStringLiteral("nextNumber"), WQStrings::tr("Next number")},
            {QStringLiteral("total"), WQStrings::tr("Total")}};
}

double WQQuickCalculator::_wq_liveOperand() const
{
    WQQuickFormattedField* editing = _wq_editingDriver();
    if (!editing || !_wq_d->editing_field->hasActiveFocus())
        return 0;
    QVariant value;
    try {
        if (!_wq_d->formatter->getObjectValue(&value, editing->session().string(), nullptr))
            return 0;
    } catch (const std::exception&) {
        return 0;
    }
    bool ok = false;
    const double operand = value.toDouble(&ok);
    return ok ? operand : 0;
}

double WQQuickCalculator::calculateTotal() const
{
    return _wq_d->tape.total(_wq_liveOperand());
}

QStringList WQQuickCalculator::tapeLines() const
{
    const WQQuickFormattedField* editing = _wq_editingDriver();
    const QString live = editing ? editing->textField()->property("text").toString() : QString();
    return _wq_d->tape.lines(live, _wq_liveOperand(), [this](double value) { return _wq_display(value); });
}

void WQQuickCalculator::_wq_showTotal()
{
    const double total = calculateTotal();
    emit totalChanged(total);
}

void WQQuickCalculator::addMathOperator(const QString& mathOperator, double number)
{
    _wq_d->tape.operators.append(mathOperator);
    _wq_d->tape.numbers.append(number);
    QTimer::singleShot(0, this, &WQQuickCalculator::_wq_reset_display);
}

void WQQuickCalculator::_wq_reset_display()
{
    if (_wq_d->closing || !_wq_d->popup)
        return;
    _wq_d->changing = true;
    emit tapeChanged(); // taller by the new row, the bottom edge where it was
    _wq_startEditing();
    _wq_d->changing = false;
}

void WQQuickCalculator::_wq_editingEnded()
{
    if (_wq_d->changing || _wq_d->closing)
        return;
    _wq_showTotal();
    QTimer::singleShot(0, this, [this] {
        if (!_wq_d->closing)
            closeAndSetAmount();
    });
}

void WQQuickCalculator::_wq_resignedKey()
{
    if (_wq_d->changing || _wq_d->closing)
        return;
    closeAndSetAmount();
}

void WQQuickCalculator::closeAndSetAmount()
{
    if (_wq_d->closing)
        return;
    _wq_d->closing = true;
    const QString text = _wq_display(calculateTotal());
    if (QQuickItem* field = _wq_d->parent_control) {
        field->setProperty("text", text);
        QMetaObject::invokeMethod(field, "select", Q_ARG(int, 0), Q_ARG(int, int(text.size())));
    }
    closeAndForgetAmount();
}

void WQQuickCalculator::closeAndForgetAmount()
{
    _wq_d->closing = true;
    if (_wq_d->parent_control)
        disconnect(_wq_d->parent_control, nullptr, this, nullptr);
    // Closed from the keyboard, the keys go back to the field (without
    // ending its editing); a click elsewhere keeps the focus it gave.
    const bool hadKeyboard = _wq_d->editing_field && _wq_d->editing_field->hasActiveFocus();
    if (_wq_d->popup)
        QMetaObject::invokeMethod(_wq_d->popup, "close");
    if (QQuickItem* field = _wq_d->parent_control; field && hadKeyboard)
        field->forceActiveFocus(Qt::PopupFocusReason);
    deleteLater();
}

void WQQuickCalculator::copyTape() const
{
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(tapeLines().join(u'\n') + u'\n');
}

bool WQQuickCalculator::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || watched != _wq_d->editing_field.get())
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (key->matches(QKeySequence::Cancel)) {
        closeAndForgetAmount();
        return true;
    }
    if (key->matches(QKeySequence::Copy)) {
        copyTape();
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

QObject* WQQuickCalculator::popup() const
{
    Q_D(const WQQuickCalculator);
    return d->popup;
}

QQuickItem* WQQuickCalculator::parentControl() const
{
    Q_D(const WQQuickCalculator);
    return d->parent_control;
}

QQuickItem* WQQuickCalculator::editingField() const
{
    Q_D(const WQQuickCalculator);
    return d->editing_field;
}

const WQCalculatorTape& WQQuickCalculator::tape() const
{
    Q_D(const WQQuickCalculator);
    return d->tape;
}

bool WQQuickCalculator::isClosing() const
{
    Q_D(const WQQuickCalculator);
    return d->closing;
}

QStringList WQQuickCalculator::operators() const
{
    Q_D(const WQQuickCalculator);
    return d->tape.operators;
}

QString WQQuickCalculator::totalText() const
{
    return _wq_display(calculateTotal());
}

} // namespace wq
