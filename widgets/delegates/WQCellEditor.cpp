#include "WQCellEditor.h"

#include <WQGeneral/calculator/WQCalculateWindowController.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include "datefields/WQCalendarDropDown.h"

#include <QAbstractItemView>
#include <QAction>
#include <QFocusEvent>
#include <QStyle>

#include <exception>

namespace wq::delegates {

CellEditor::CellEditor(std::shared_ptr<WQFormatter> formatter, const QModelIndex& index, QWidget* parent)
    : WQLineEdit(std::move(formatter), parent), _index(index),
      _dateCell(dynamic_cast<const WQDateFormatter*>(this->formatter().get()) != nullptr)
{
    if (parent)
        parent->installEventFilter(this);
    if (_dateCell) {
        QAction* calendar = addAction(style()->standardIcon(QStyle::SP_ArrowDown), QLineEdit::TrailingPosition);
        calendar->setText(WQStrings::tr("Choose a date"));
        calendar->setToolTip(calendar->text());
        connect(calendar, &QAction::triggered, this, &CellEditor::dropDownCalendar);
    }
}

CellEditor::~CellEditor() = default;

QAbstractItemView* CellEditor::view() const
{
    for (QWidget* ancestor = parentWidget(); ancestor; ancestor = ancestor->parentWidget())
        if (auto* view = qobject_cast<QAbstractItemView*>(ancestor))
            return view;
    return nullptr;
}

bool CellEditor::canLeave() const
{
    if (!hasPendingEdit() || !formatter())
        return true;
    try {
        QVariant value;
        return formatter()->getObjectValue(&value, text(), nullptr);
    } catch (const std::exception&) {
        return false;
    }
}

void CellEditor::dropDownCalendar()
{
    // The date being typed, when it reads; else the cell's.
    std::optional<WQDate> shown = WQDateValue(*this);
    if (hasPendingEdit() && canLeave()) {
        QVariant typed;
        if (formatter()->getObjectValue(&typed, text(), nullptr) && typed.canConvert<WQDate>())
            shown = typed.value<WQDate>();
    }
    datefields::dropDownCalendar(*this, shown ? shown->toQDate() : QDate(), [this](const QDate& picked) {
        setWQDateValue(*this, WQDate::fromQDate(picked));
        selectAll();
        emit valueChosen();
    });
}

void CellEditor::focusOutEvent(QFocusEvent* event)
{
    // The calculator this editor opened writes its total here; the delegate
    // is told so that the total reaches the model.
    if (event->reason() == Qt::PopupFocusReason) {
        WQCalculateWindowController* calculator = WQCalculateWindowController::openCalculator();
        if (calculator && calculator->parentControl() == this && calculator != _followedCalculator) {
            _followedCalculator = calculator;
            connect(calculator, &WQCalculateWindowController::amountWritten, this, &CellEditor::valueChosen);
        }
    }
    WQLineEdit::focusOutEvent(event);
}

bool CellEditor::eventFilter(QObject* watched, QEvent* event)
{
    // A click on another cell would make it current and close this editor,
    // dropping a text that cannot be read: the press goes nowhere, and the
    // field's refusal (when the focus left) stands.
    if (watched == parentWidget()
        && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        && !canLeave())
        return true;
    return WQLineEdit::eventFilter(watched, event);
}

} // namespace wq::delegates
