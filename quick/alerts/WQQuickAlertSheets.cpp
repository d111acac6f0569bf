#include <WQGeneral/quick/WQQuickAlertSheets.h>

#include "WQQuickAlertSheets_p.h"

#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>
#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/quick/WQQuickFormattedField.h>

#include "detail/WQModuleComponent.h"

#include <QQmlEngine>
#include <QQuickItem>

namespace wq {

WQQuickAlertSheets::WQQuickAlertSheets(QObject* parent)
    : QObject(parent), _wq_d(std::make_unique<WQQuickAlertSheetsPrivate>())
{
    connect(&WQWarningSuppression::notifier(), &WQWarningSuppression::changed, this,
            &WQQuickAlertSheets::suppressedKeysChanged);
}

WQQuickAlertSheets::~WQQuickAlertSheets() = default;

void WQQuickAlertSheets::componentComplete()
{
    _wq_findWindow();
}

// The window of what the object is declared in; an item may be shown in one
// only after the document is complete.
bool WQQuickAlertSheets::_wq_findWindow()
{
    for (QObject* up = parent(); up && !_wq_d->window; up = up->parent()) {
        if (auto* window = qobject_cast<QQuickWindow*>(up))
            setWindow(window);
        else if (auto* item = qobject_cast<QQuickItem*>(up); item && item->window())
            setWindow(item->window());
    }
    return _wq_d->window;
}

void WQQuickAlertSheets::setWindow(QQuickWindow* window)
{
    if (window == _wq_d->window)
        return;
    _wq_d->window = window;
    delete _wq_d->dialog; // made again over the new window when needed
    // A sheet that was showing shows again over the new window.
    if (_wq_d->current) {
        _wq_d->waiting.push_front(std::move(*_wq_d->current));
        _wq_d->current.reset();
        emit sheetChanged();
    }
    emit windowChanged();
    if (window)
        _wq_showNext();
}

// --- The sheets (their texts are core's, shared with the widgets) -------------

bool WQQuickAlertSheets::sheetForBlankTextField(QObject* textField, const QString& name)
{
    _wq_begin(WQAlertSheet::forBlankTextField(name), textField);
    return false;
}

bool WQQuickAlertSheets::sheetForNegativeTextField(QObject* textField, const QString& name)
{
    _wq_begin(WQAlertSheet::forNegativeTextField(name), textField);
    return false;
}

bool WQQuickAlertSheets::sheetForNegativeOrZeroTextField(QObject* textField, const QString& name)
{
    _wq_begin(WQAlertSheet::forNegativeOrZeroTextField(name), textField);
    return false;
}

bool WQQuickAlertSheets::sheetForIntegerTextFieldValidationFailure(QObject*, const QString& name,
                                                                   const QString& errorDescription)
{
    _wq_begin(WQAlertSheet::forIntegerTextFieldValidationFailure(name, errorDescription), nullptr);
    return false;
}

bool WQQuickAlertSheets::sheetForDecimalColumnValidationFailure(QObject*, const QString& name,
                                                                const QString& errorDescription, bool asATM)
{
    _wq_begin(WQAlertSheet::forDecimalColumnValidationFailure(name, errorDescription, asATM), nullptr);
    return false;
}

bool WQQuickAlertSheets::sheetForDecimalFieldValidationFailure(QObject*, const QString& name,
                                                               const QString& errorDescription, bool asATM)
{
    _wq_begin(WQAlertSheet::forDecimalFieldValidationFailure(name, errorDescription, asATM), nullptr);
    return false;
}

bool WQQuickAlertSheets::sheetForDateField(QObject* dateField, const QString& name, const QString& dateSeparator,
                                           const QString& errorDescription)
{
    _wq_begin(WQAlertSheet::forDateField(dateField != nullptr, name, dateSeparator, errorDescription), dateField);
    return false;
}

bool WQQuickAlertSheets::presentRefusal(QObject* textField, const QString& name, const QString& errorDescription)
{
    const WQQuickFormattedField* driver = WQQuickFormattedField::of(textField);
    const WQFormatter* formatter = driver ? driver->formatter().get() : nullptr;
    if (const auto* dates = dynamic_cast<const WQDateFormatter*>(formatter))
        return sheetForDateField(textField, name, dates->localizedSeparator(), errorDescription);
    if (const auto* money = dynamic_cast<const WQMoneyFormatter*>(formatter))
        return sheetForDecimalFieldValidationFailure(textField, name, errorDescription, money->isATMMode());
    if (dynamic_cast<const WQPositiveIntegerFormatter*>(formatter))
        return sheetForIntegerTextFieldValidationFailure(textField, name, errorDescription);
    if (dynamic_cast<const WQDecimalFormatter*>(formatter))
        return sheetForDecimalFieldValidationFailure(textField, name, errorDescription, false);
    return false;
}

// --- Showing them --------------------------------------------------------------

bool WQQuickAlertSheets::isEditCancel() const
{
    return _wq_d->current && _wq_d->current->sheet.buttons == WQAlertSheet::Buttons::EditCancel;
}

QVariantMap WQQuickAlertSheets::labels() const
{
    return {{QStringLiteral("edit"), WQStrings::tr("Edit")},
            {QStringLiteral("cancel"), WQStrings::tr("Cancel")},
            {QStringLiteral("ok"), WQStrings::tr("OK")},
            {QStringLiteral("dontShowAgain"), WQStrings::tr("Don't show again")}};
}

QStringList WQQuickAlertSheets::suppressedKeys() const
{
    return WQWarningSuppression::suppressedKeys();
}

void WQQuickAlertSheets::showAllWarningsAgain()
{
    WQWarningSuppression::showAllAgain();
}

void WQQuickAlertSheets::_wq_begin(const std::optional<WQAlertSheet>& sheet, QObject* field)
{
    if (!sheet)
        return; // silenced
    if (!_wq_d->window && !_wq_findWindow()) {
        qWarning("WQGeneral: alert sheets without a window cannot show \"%s\"", qUtf8Printable(sheet->title));
        return;
    }
    _wq_d->waiting.push_back({*sheet, field});
    _wq_showNext();
}

void WQQuickAlertSheets::_wq_showNext()
{
    if (_wq_d->current || _wq_d->waiting.empty() || !_wq_makeDialog())
        return;
    _wq_d->current = std::move(_wq_d->waiting.front());
    _wq_d->waiting.pop_front();
    emit sheetChanged();
    QMetaObject::invokeMethod(_wq_d->dialog, "open");
}

bool WQQuickAlertSheets::_wq_makeDialog()
{
    if (_wq_d->dialog)
        return true;
    QQmlEngine* engine = qmlEngine(this);
    if (!engine && _wq_d->window)
        engine = qmlEngine(_wq_d->window->contentItem());
    if (!engine) {
        qWarning("WQGeneral: alert sheets need a window made by a QML engine");
        return false;
    }
    _wq_d->dialog = detail::createModuleObject(*engine, "AlertSheetDialog", this, [this](QObject& made) {
        made.setProperty("sheets", QVariant::fromValue<QObject*>(this));
        made.setProperty("parent", QVariant::fromValue(_wq_d->window->contentItem()));
    });
    return _wq_d->dialog;
}

void WQQuickAlertSheets::finish(bool cancel, bool dontShowAgain)
{
    if (!_wq_d->current)
        return;
    const WQQuickAlertSheetsPrivate::Pending ended = std::move(*_wq_d->current);
    // Take the sheet off the window first: what follows may start the next.
    _wq_d->current.reset();
    if (_wq_d->dialog)
        QMetaObject::invokeMethod(_wq_d->dialog, "close");
    emit sheetChanged();
    if (ended.sheet.buttons == WQAlertSheet::Buttons::EditCancel) {
        if (cancel && ended.field)
            _wq_cancelEdit(ended.field);
    } else if (dontShowAgain) {
        WQWarningSuppression::suppress(ended.sheet.suppressionKey);
    }
    _wq_showNext();
}

void WQQuickAlertSheets::_wq_cancelEdit(QObject* field)
{
    if (WQQuickFormattedField* driver = WQQuickFormattedField::of(field)) {
        driver->abortEditing();
    } else {
        // A plain text field's history starts at its last text from the program.
        for (int steps = 0; steps < 10000 && field->property("canUndo").toBool(); ++steps)
            QMetaObject::invokeMethod(field, "undo");
        QMetaObject::invokeMethod(field, "selectAll");
    }
    if (auto* item = qobject_cast<QQuickItem*>(field))
        item->forceActiveFocus(Qt::OtherFocusReason);
}

QQuickWindow* WQQuickAlertSheets::window() const
{
    Q_D(const WQQuickAlertSheets);
    return d->window;
}

QObject* WQQuickAlertSheets::dialog() const
{
    Q_D(const WQQuickAlertSheets);
    return d->dialog;
}

bool WQQuickAlertSheets::isShowing() const
{
    Q_D(const WQQuickAlertSheets);
    return d->current.has_value();
}

QString WQQuickAlertSheets::title() const
{
    Q_D(const WQQuickAlertSheets);
    return d->current ? d->current->sheet.title : QString();
}

QString WQQuickAlertSheets::message() const
{
    Q_D(const WQQuickAlertSheets);
    return d->current ? d->current->sheet.message : QString();
}

} // namespace wq
