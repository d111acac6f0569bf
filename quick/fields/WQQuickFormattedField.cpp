#include <WQGeneral/quick/WQQuickFormattedField.h>

#include "WQQuickFormattedField_p.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/fields/WQFieldKind.h>
#include <WQGeneral/quick/WQQuickMoneyOwner.h>

#include "detail/WQSignalRelay.h"

#include <QDateTime>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTimer>

#include <algorithm>

namespace wq {
namespace {

// The property a driven field carries, so the toolkit finds its driver.
constexpr char kDriverProperty[] = "_wq_formattedField";

bool isDateFormatter(const std::shared_ptr<WQFormatter>& formatter)
{
    return dynamic_cast<const WQDateFormatter*>(formatter.get()) != nullptr;
}

bool isNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

// Events that may paste into the field without a key.
bool mayPaste(QEvent::Type type)
{
    return type == QEvent::Drop || type == QEvent::MouseButtonRelease; // middle-button paste
}

} // namespace

WQQuickFormattedField::WQQuickFormattedField(QObject* parent)
    : QObject(parent), _wq_d(std::make_unique<WQQuickFormattedFieldPrivate>())
{
    connect(&_wq_d->session, &WQFieldSession::objectValueChanged, this, &WQQuickFormattedField::valueChanged);
    connect(&_wq_d->session, &WQFieldSession::editedTextChanged, this, &WQQuickFormattedField::editedTextChanged);
    connect(&_wq_d->session, &WQFieldSession::editRefused, this, &WQQuickFormattedField::editRefused);
    connect(&_wq_d->session, &WQFieldSession::valueRefused, this, &WQQuickFormattedField::valueRefused);
    connect(&_wq_d->session, &WQFieldSession::refusalCleared, this, &WQQuickFormattedField::refusalCleared);
}

WQQuickFormattedField::~WQQuickFormattedField()
{
    setTextField(nullptr);
}

WQQuickFormattedField* WQQuickFormattedField::of(const QObject* textField)
{
    if (!textField)
        return nullptr;
    return qobject_cast<WQQuickFormattedField*>(textField->property(kDriverProperty).value<QObject*>());
}

void WQQuickFormattedField::setTextField(QQuickItem* textField)
{
    if (textField == _wq_d->textField)
        return;
    if (QQuickItem* old = _wq_d->textField) {
        old->removeEventFilter(this);
        old->setProperty(kDriverProperty, QVariant());
    }
    delete _wq_d->relay;
    _wq_d->relay = nullptr;
    _wq_d->textField = textField;
    if (textField) {
        textField->setProperty(kDriverProperty, QVariant::fromValue<QObject*>(this));
        textField->installEventFilter(this);
        // The field's change signals reach the session; the Qt Quick text
        // types are no public C++ classes, so they are found by name.
        auto* relay = new detail::WQSignalRelay(this);
        relay->relay(textField, "textEdited()", [this] { _wq_d->session.textEdited(); });
        relay->relay(textField, "textChanged()", [this] { _wq_d->session.textChanged(); });
        for (const char* moved : {"cursorPositionChanged()", "selectionStartChanged()", "selectionEndChanged()"})
            relay->relay(textField, moved, [this] { _wq_d->session.selectionChanged(); });
        _wq_d->relay = relay;
        // The field shows the value; a field that held text keeps it as an edit.
        if (_wq_d->session.objectValue().isValid() || _wq_d->text().isEmpty())
            _wq_d->session.setObjectValue(_wq_d->session.objectValue());
        else
            _wq_d->session.textChanged();
    }
    emit textFieldChanged();
}

// --- The field's text and selection --------------------------------------------

QString WQQuickFormattedFieldPrivate::text() const
{
    return textField ? textField->property("text").toString() : QString();
}

WQRange WQQuickFormattedFieldPrivate::selectedRange() const
{
    if (!textField)
        return {0, 0};
    const int start = textField->property("selectionStart").toInt();
    const int end = textField->property("selectionEnd").toInt();
    if (end > start)
        return {start, end - start};
    return {textField->property("cursorPosition").toInt(), 0};
}

void WQQuickFormattedFieldPrivate::setText(const QString& text)
{
    if (textField)
        textField->setProperty("text", text);
}

void WQQuickFormattedFieldPrivate::setSelectedRange(WQRange range)
{
    if (!textField)
        return;
    const qsizetype size = text().size();
    const qsizetype location = std::clamp<qsizetype>(range.location, 0, size);
    const qsizetype length = std::clamp<qsizetype>(range.length, 0, size - location);
    if (length > 0)
        QMetaObject::invokeMethod(textField, "select", Q_ARG(int, int(location)), Q_ARG(int, int(location + length)));
    else
        textField->setProperty("cursorPosition", int(location));
}

// --- Events ------------------------------------------------------------------

bool WQQuickFormattedField::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != _wq_d->textField.get())
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            if (!watched->property("readOnly").toBool())
                key->matches(QKeySequence::Undo) ? undoEdit() : redoEdit();
            key->accept();
            return true;
        }
        // Escape gives up an edit; with nothing to give up it goes on (a
        // dialog or pop-up closes).
        if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier && _wq_d->session.escape()) {
            key->accept();
            return true;
        }
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && !validateEditing()) {
            key->accept(); // a refused value must not reach a default button
            return true;
        }
        return _wq_deliver(watched, event, WQFieldSession::keyEvent(key->key(), key->text(), key->modifiers()));
    }
    case QEvent::InputMethod: {
        const auto* input = static_cast<const QInputMethodEvent*>(event);
        WQEditEvent edit;
        if (!input->commitString().isEmpty())
            edit = {WQEditEvent::Type::KeyDown, input->commitString(), false};
        return _wq_deliver(watched, event, edit);
    }
    case QEvent::FocusIn: {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        watched->event(event);
        // Tabbing into a field selects its text, so typing replaces it.
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
            _wq_d->setSelectedRange({0, _wq_d->text().size()});
        return true;
    }
    case QEvent::FocusOut:
        _wq_focusOut(watched, event);
        return true;
    default:
        if (mayPaste(event->type()))
            return _wq_deliver(watched, event, WQEditEvent{});
        return QObject::eventFilter(watched, event);
    }
}

bool WQQuickFormattedField::_wq_deliver(QObject* item, QEvent* event, const WQEditEvent& edit)
{
    // The field handles the event as it would unfiltered; its edit is judged
    // once it is done, so its own signals all go out before any correction.
    const QPointer<WQQuickFormattedField> alive(this);
    _wq_d->session.beginEvent(edit);
    item->event(event);
    if (alive)
        _wq_d->session.endEvent();
    return true;
}

void WQQuickFormattedField::_wq_focusOut(QObject* item, QEvent* event)
{
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const QPointer<WQQuickFormattedField> alive(this);
    item->event(event);
    // Switching windows or opening a pop-up (the calculator, a menu) does
    // not end editing.
    if (!alive || reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
        return;
    if (!validateEditing()) {
        QTimer::singleShot(0, this, [this] {
            if (_wq_d->textField && _wq_d->textField->isVisible() && _wq_d->textField->isEnabled())
                _wq_d->textField->forceActiveFocus(Qt::OtherFocusReason);
        });
    }
}

// --- Formatter and value -----------------------------------------------------

WQQuickFormattedField::FormatterKind WQQuickFormattedField::formatterKind() const
{
    if (!formatter())
        return NoFormatter;
    return _wq_d->kindFormatter.lock() == formatter() ? _wq_d->kind : Custom;
}

void WQQuickFormattedField::setFormatterKind(FormatterKind kind)
{
    if (kind == Custom || kind == formatterKind())
        return;
    _wq_d->kind = kind;
    _wq_installKind();
}

void WQQuickFormattedField::setPlaces(int places)
{
    places = std::clamp(places, 0, 9);
    if (places == _wq_d->places)
        return;
    _wq_d->places = places;
    emit placesChanged();
    if (const FormatterKind kind = formatterKind(); kind == Money || kind == CalculatingMoney)
        _wq_installKind();
}

void WQQuickFormattedField::setOwner(WQQuickMoneyOwner* owner)
{
    if (owner == _wq_d->owner)
        return;
    if (_wq_d->owner)
        disconnect(_wq_d->owner, nullptr, this, nullptr);
    _wq_d->owner = owner;
    // An owner that goes away leaves its fields to the system's settings.
    if (owner)
        connect(owner, &QObject::destroyed, this, [this] { setOwner(nullptr); });
    emit ownerChanged();
    if (const FormatterKind kind = formatterKind(); kind == Money || kind == CalculatingMoney)
        _wq_installKind();
}

void WQQuickFormattedField::_wq_installKind()
{
    auto formatter = WQFormatterOfKind(static_cast<WQFieldKind>(_wq_d->kind), _wq_d->places,
                                       _wq_d->owner ? &_wq_d->owner->owner() : nullptr);
    _wq_d->kindFormatter = formatter;
    _wq_install(std::move(formatter));
}

void WQQuickFormattedField::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    _wq_d->kindFormatter.reset();
    _wq_install(std::move(formatter));
}

void WQQuickFormattedField::_wq_install(std::shared_ptr<WQFormatter> formatter)
{
    _wq_d->session.setFormatter(std::move(formatter));
    // QML may set a date value before the date kind: it becomes a date now.
    const QVariant value = _wq_d->session.objectValue();
    const int type = value.typeId();
    if (!_wq_d->session.hasPendingEdit() && (type == QMetaType::QDateTime || type == QMetaType::QDate))
        _wq_d->session.setObjectValue(_wq_objectValueFor(value));
    emit formatterChanged();
}

QVariant WQQuickFormattedField::value() const
{
    QVariant value = _wq_d->session.objectValue();
    if (value.metaType() == QMetaType::fromType<WQDate>()) {
        const QDateTime midnight = value.value<WQDate>().nsDate();
        return midnight.isValid() ? QVariant(midnight) : QVariant();
    }
    if (isNumber(value))
        return value.toDouble();
    return value;
}

QVariant WQQuickFormattedField::_wq_objectValueFor(const QVariant& value) const
{
    if (value.isNull() || !value.isValid())
        return QVariant();
    if (isDateFormatter(formatter())) {
        if (value.typeId() == QMetaType::QDateTime && value.toDateTime().isValid())
            return QVariant::fromValue(WQDate::dateWithNSDate(value.toDateTime()));
        if (value.typeId() == QMetaType::QDate && value.toDate().isValid())
            return QVariant::fromValue(WQDate(value.toDate().year(), value.toDate().month(), value.toDate().day()));
    } else if (formatter() && isNumber(value)) {
        return value.toDouble();
    }
    return value;
}

void WQQuickFormattedField::setValue(const QVariant& value)
{
    _wq_d->session.setObjectValue(_wq_objectValueFor(value));
}

QString WQQuickFormattedField::displayString(const QVariant& value) const
{
    return _wq_d->session.displayString(_wq_objectValueFor(value));
}

bool WQQuickFormattedField::validateEditing() { return _wq_d->session.validateEditing(); }
void WQQuickFormattedField::abortEditing() { _wq_d->session.abortEditing(); }
void WQQuickFormattedField::undoEdit() { _wq_d->session.undoEdit(); }
void WQQuickFormattedField::redoEdit() { _wq_d->session.redoEdit(); }

QQuickItem* WQQuickFormattedField::textField() const
{
    Q_D(const WQQuickFormattedField);
    return d->textField;
}

int WQQuickFormattedField::places() const noexcept
{
    Q_D(const WQQuickFormattedField);
    return d->places;
}

WQQuickMoneyOwner* WQQuickFormattedField::owner() const
{
    Q_D(const WQQuickFormattedField);
    return d->owner;
}

WQFieldSession& WQQuickFormattedField::session() noexcept
{
    Q_D(WQQuickFormattedField);
    return d->session;
}

const std::shared_ptr<WQFormatter>& WQQuickFormattedField::formatter() const noexcept
{
    Q_D(const WQQuickFormattedField);
    return d->session.formatter();
}

bool WQQuickFormattedField::hasPendingEdit() const
{
    Q_D(const WQQuickFormattedField);
    return d->session.hasPendingEdit();
}

} // namespace wq
