#include <WQGeneral/alerts/WQAlertSheet.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/alerts/WQWindowController.h>

#include "WQWindowController_p.h"
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

namespace wq {

namespace {

// A message box that behaves as a sheet of its window: no title bar of its
// own (so nothing to minimise or maximise apart from the window), a frame
// drawn round it, at the top of the window and moving with it. While it is
// up the keyboard is the sheet's: a click on the window behind it, which
// the window manager answers by activating that window, hands the
// activation straight back.
class Sheet : public QMessageBox {
public:
    explicit Sheet(QWidget& window) : QMessageBox(&window), _window(window)
    {
        // (The box's own setWindowModality() sets its flags again.)
        setWindowModality(Qt::WindowModal);
        setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &_window && isVisible()) {
            if (event->type() == QEvent::WindowActivate)
                // After the window manager is done with the click.
                QTimer::singleShot(0, this, [this] {
                    if (isVisible()) {
                        raise();
                        activateWindow();
                    }
                });
            else if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
                _place();
        }
        return QMessageBox::eventFilter(watched, event);
    }

    void showEvent(QShowEvent* event) override
    {
        QMessageBox::showEvent(event);
        _place();
        // Read in the order the eye takes: the title, the explanation, the
        // check box, the buttons (the box makes them in another order).
        for (const char* name : {"qt_msgboxex_icon_label", "qt_msgbox_label", "qt_msgbox_informativelabel"})
            if (auto* part = findChild<QLabel*>(QLatin1StringView(name), Qt::FindDirectChildrenOnly))
                part->raise();
        if (checkBox())
            checkBox()->raise();
        if (auto* buttonBox = findChild<QWidget*>(QStringLiteral("qt_msgbox_buttonbox"), Qt::FindDirectChildrenOnly))
            buttonBox->raise();
        // The keyboard starts on the default button, as in any alert (the
        // box would give it to the first control, the check box).
        if (QPushButton* button = defaultButton())
            button->setFocus(Qt::ActiveWindowFocusReason);
        else if (!buttons().isEmpty())
            buttons().constFirst()->setFocus(Qt::ActiveWindowFocusReason);
    }

    void paintEvent(QPaintEvent* event) override
    {
        QMessageBox::paintEvent(event);
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Dark));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    // Centred under the top edge of the window's inside.
    void _place()
    {
        const QRect inside(_window.mapToGlobal(QPoint(0, 0)), _window.size());
        move(inside.center().x() - width() / 2, inside.top());
    }

    QWidget& _window;
};

} // namespace

// --- The sheets (their texts are core's, shared with every toolkit) -----------

bool WQWindowController::sheetForBlankTextField(QWidget* textField, const QString& name)
{
    const WQAlertSheet sheet = WQAlertSheet::forBlankTextField(name);
    _wq_startEditCancelSheet(textField, sheet.title, sheet.message);
    return false;
}

bool WQWindowController::sheetForNegativeTextField(QWidget* textField, const QString& name)
{
    const WQAlertSheet sheet = WQAlertSheet::forNegativeTextField(name);
    _wq_startEditCancelSheet(textField, sheet.title, sheet.message);
    return false;
}

bool WQWindowController::sheetForNegativeOrZeroTextField(QWidget* textField, const QString& name)
{
    const WQAlertSheet sheet = WQAlertSheet::forNegativeOrZeroTextField(name);
    _wq_startEditCancelSheet(textField, sheet.title, sheet.message);
    return false;
}

bool WQWindowController::sheetForIntegerTextFieldValidationFailure(QObject*, const QString& localizedTextFieldName,
                                                                   const QString& errorDescription)
{
    if (const auto sheet = WQAlertSheet::forIntegerTextFieldValidationFailure(localizedTextFieldName, errorDescription))
        _wq_startAlertSheetTitle(sheet->title, sheet->message, sheet->suppressionKey);
    return false;
}

bool WQWindowController::sheetForDecimalColumnValidationFailure(QObject*, const QString& localizedTextFieldName,
                                                                const QString& errorDescription, bool asATM)
{
    if (const auto sheet =
            WQAlertSheet::forDecimalColumnValidationFailure(localizedTextFieldName, errorDescription, asATM))
        _wq_startAlertSheetTitle(sheet->title, sheet->message, sheet->suppressionKey);
    return false;
}

bool WQWindowController::sheetForDecimalFieldValidationFailure(QObject*, const QString& localizedTextFieldName,
                                                               const QString& errorDescription, bool asATM)
{
    if (const auto sheet =
            WQAlertSheet::forDecimalFieldValidationFailure(localizedTextFieldName, errorDescription, asATM))
        _wq_startAlertSheetTitle(sheet->title, sheet->message, sheet->suppressionKey);
    return false;
}

bool WQWindowController::sheetForDateField(QWidget* dateField, const QString&, const QString& localizedTextFieldName,
                                           const QString& localizedDateSeparator, const QString& errorDescription)
{
    const auto sheet = WQAlertSheet::forDateField(dateField != nullptr, localizedTextFieldName,
                                                  localizedDateSeparator, errorDescription);
    if (sheet && dateField)
        _wq_startEditCancelSheet(dateField, sheet->title, sheet->message);
    else if (sheet)
        _wq_startAlertSheetTitle(sheet->title, sheet->message, sheet->suppressionKey);
    return false;
}

// --- Showing them -------------------------------------------------------------

QMessageBox* WQWindowController::attachedSheet() const
{
    return _wq_d->sheet;
}

QMessageBox* WQWindowController::_wq_newSheet(const QString& title, const QString& message)
{
    if (!_wq_d->window) {
        qWarning("WQGeneral: a window controller without a window cannot show \"%s\"", qUtf8Printable(title));
        return nullptr;
    }
    auto* sheet = new Sheet(*_wq_d->window->window());
    // What task lists and screen readers call it.
    sheet->setWindowTitle(title);
    sheet->setIcon(QMessageBox::Warning);
    // The texts are shown as they are: no markup, no placeholders.
    sheet->setTextFormat(Qt::PlainText);
    sheet->setText(title);
    sheet->setInformativeText(message);
    // The title stands out above the explanation, as alert titles do.
    if (auto* heading = sheet->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QFont bold = heading->font();
        bold.setBold(true);
        heading->setFont(bold);
    }
    // Long explanations read better as a paragraph than as a column.
    if (auto* information = sheet->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel")))
        information->setMinimumWidth(std::min(380, _wq_d->window->width()));
    return sheet;
}

void WQWindowController::_wq_startEditCancelSheet(QWidget* field, const QString& title, const QString& message)
{
    QMessageBox* sheet = _wq_newSheet(title, message);
    if (!sheet)
        return;
    QPushButton* edit = sheet->addButton(WQStrings::tr("Edit"), QMessageBox::AcceptRole);
    QPushButton* cancel = sheet->addButton(WQStrings::tr("Cancel"), QMessageBox::RejectRole);
    sheet->setDefaultButton(edit);
    sheet->setEscapeButton(cancel);
    const QPointer<QWidget> context(field);
    _wq_beginSheet(sheet, [this, context](QMessageBox& ended, int returnCode) {
        invalidTextFieldSheetDidEnd(&ended, returnCode, context.data());
    });
}

void WQWindowController::_wq_startAlertSheetTitle(const QString& title, const QString& information,
                                                  const QString& suppressionKey)
{
    QMessageBox* alert = _wq_newSheet(title, information);
    if (!alert)
        return;
    // No buttons of its own: the box shows its single default OK button.
    alert->setCheckBox(new QCheckBox(WQStrings::tr("Don't show again"), alert));
    _wq_beginSheet(alert, [this, suppressionKey](QMessageBox& ended, int returnCode) {
        _wq_alertDidEnd(ended, returnCode, suppressionKey);
    });
}

void WQWindowController::_wq_beginSheet(QMessageBox* sheet, SheetEnd didEnd)
{
    connect(sheet, &QDialog::finished, this, [this, sheet, didEnd = std::move(didEnd)] {
        // Closed without a button (by the window system, say): as Escape.
        QAbstractButton* clicked = sheet->clickedButton() ? sheet->clickedButton() : sheet->escapeButton();
        const bool other = clicked && sheet->buttonRole(clicked) == QMessageBox::RejectRole;
        // Take the sheet off the window first: the end handler may start the next.
        if (_wq_d->sheet == sheet)
            _wq_d->sheet = nullptr;
        sheet->hide();
        didEnd(*sheet, other ? OtherReturn : DefaultReturn);
        sheet->deleteLater();
        _wq_showNextSheet();
    });
    _wq_d->waitingSheets.emplace_back(sheet);
    _wq_showNextSheet();
}

void WQWindowController::_wq_showNextSheet()
{
    if (_wq_d->sheet)
        return;
    while (!_wq_d->waitingSheets.empty()) {
        QPointer<QMessageBox> next = _wq_d->waitingSheets.front();
        _wq_d->waitingSheets.pop_front();
        if (next) {
            _wq_d->sheet = next;
            next->open();
            return;
        }
    }
}

void WQWindowController::invalidTextFieldSheetDidEnd(QMessageBox*, int returnCode, QWidget* contextInfo)
{
    if (returnCode != OtherReturn || !contextInfo)
        return;
    if (auto* field = qobject_cast<WQLineEdit*>(contextInfo)) {
        field->abortEditing();
    } else if (auto* lineEdit = qobject_cast<QLineEdit*>(contextInfo)) {
        // A plain line edit's history starts at its last setText().
        while (lineEdit->isUndoAvailable())
            lineEdit->undo();
        lineEdit->selectAll();
    }
    contextInfo->setFocus(Qt::OtherFocusReason);
}

void WQWindowController::_wq_alertDidEnd(QMessageBox& alert, int, const QString& suppressionKey)
{
    if (alert.checkBox() && alert.checkBox()->isChecked())
        WQWarningSuppression::suppress(suppressionKey);
}

} // namespace wq
