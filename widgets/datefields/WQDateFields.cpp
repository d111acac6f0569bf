#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/datefields/WQDatePicker.h>
#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "WQCalendarDropDown.h"
#include "WQPickerFormat.h"

#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QBoxLayout>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLayout>
#include <QTimeZone>
#include <QVariant>

#include <algorithm>
#include <memory>

namespace wq {
namespace {

// The picker's range, as moments: 1984-01-02 00:00 UTC, and 10000-01-01
// 00:00 UTC counted from 2001-01-01. QDateEdit stops at 9999-12-31.
constexpr qint64 kMinimumSecondsSince1970 = 441849600;
constexpr qint64 kMaximumSecondsSince2001 = 252423993600;

QDate minimumPickerDate()
{
    return QDateTime::fromSecsSinceEpoch(kMinimumSecondsSince1970, QTimeZone::utc()).date();
}

QDate maximumPickerDate()
{
    const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
    return std::min(reference.addSecs(kMaximumSecondsSince2001).date(), QDate(9999, 12, 31));
}

void copyLookAndIdentity(const QWidget& field, QDateEdit& picker)
{
    picker.setSizePolicy(field.sizePolicy());
    picker.setFont(field.font());
    picker.setObjectName(field.objectName());
    picker.setToolTip(field.toolTip());
    picker.setStatusTip(field.statusTip());
    picker.setWhatsThis(field.whatsThis());
    picker.setMinimumSize(field.minimumSize());
    for (const QByteArray& name : field.dynamicPropertyNames())
        picker.setProperty(name.constData(), field.property(name.constData()));
}

// The field's slot in its parent's layout goes to the picker (replacing),
// or the picker goes right after it in a box layout (keeping).
bool placeInLayout(QWidget& field, QDateEdit& picker, bool replacing)
{
    QWidget* parent = field.parentWidget();
    QLayout* layout = parent ? parent->layout() : nullptr;
    if (!layout)
        return false;
    QLayout* holder = nullptr;
    // The field may sit in a nested layout.
    std::function<QLayout*(QLayout*)> findHolder = [&](QLayout* l) -> QLayout* {
        if (l->indexOf(&field) >= 0)
            return l;
        for (int i = 0; i < l->count(); ++i)
            if (QLayout* inner = l->itemAt(i)->layout())
                if (QLayout* found = findHolder(inner))
                    return found;
        return nullptr;
    };
    holder = findHolder(layout);
    if (!holder)
        return false;
    if (replacing) {
        std::unique_ptr<QLayoutItem> old(holder->replaceWidget(&field, &picker, Qt::FindDirectChildrenOnly));
        return old != nullptr;
    }
    if (auto* box = qobject_cast<QBoxLayout*>(holder)) {
        box->insertWidget(box->indexOf(&field) + 1, &picker);
        return true;
    }
    return false;
}

// Keeps a picker's display format in step with the regional settings; lives
// as the picker's child.
class FormatFollower : public QObject {
public:
    FormatFollower(QDateEdit& picker, bool showDay) : QObject(&picker)
    {
        apply(picker, showDay);
        _observation.observe(kWQNotif_CurrentLocaleDidChange, nullptr,
                             [&picker, showDay](const WQNotification&) { apply(picker, showDay); });
    }

    static void apply(QDateEdit& picker, bool showDay)
    {
        picker.setDisplayFormat(datefields::pickerDisplayFormat(
            WQRegionalSettings::datePattern(WQRegionalSettings::DateStyle::Short), showDay));
    }

private:
    WQObservation _observation{WQNotificationCenter::distributedCenter()};
};

// Drops the picker's calendar down under it, as its button does.
void dropDownCalendar(QDateEdit& picker)
{
    QCalendarWidget* calendar = picker.calendarWidget(); // made on first use
    QWidget* popup = calendar->window();
    calendar->setSelectedDate(picker.date());
    popup->adjustSize();
    datefields::placeUnder(*popup, picker);
    popup->show();
    calendar->setFocus(Qt::PopupFocusReason);
}

// The date field's increment keys on the picker: + or = a day on (Alt: a
// month), - a day back, t today; Alt+Down or F4 drops the calendar down.
// Lives as the picker's child.
class IncrementKeys : public QObject {
public:
    explicit IncrementKeys(QDateEdit& picker) : QObject(&picker), _picker(picker) { picker.installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || watched != &_picker)
            return false;
        const auto* key = static_cast<const QKeyEvent*>(event);
        if (_picker.calendarPopup()
            && (key->key() == Qt::Key_F4 || (key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier))) {
            dropDownCalendar(_picker);
            return true;
        }
        if (key->text().isEmpty() || key->modifiers().testFlag(Qt::ControlModifier))
            return false;
        const std::optional<WQDateFormatter::IncrementStep> step =
            WQDateFormatter::incrementStep(key->text(), key->modifiers().testFlag(Qt::AltModifier));
        if (!step)
            return false;
        const std::optional<WQDate> date =
            step->today ? WQDate::date() : std::optional(WQDateValue(_picker).dateByAddingYears(0, step->months, step->days));
        if (date)
            setWQDateValue(_picker, *date); // the picker keeps it within its range
        return true;
    }

private:
    QDateEdit& _picker;
};

} // namespace

QDateEdit* WQSetupExtendedDateField(QWidget*& place, bool linkAndReplace, bool showDay)
{
    QWidget* field = place;
    const QRect frame = field ? field->geometry() : QRect(0, 0, 0, 0);

    std::unique_ptr<QDateEdit> made = WQDatePicker::makePicker();
    QDateEdit& picker = *made;
    // A calendar drops down from the button or with Alt+Down; the arrow keys
    // and the wheel still step the section under the caret.
    picker.setCalendarPopup(true);
    new IncrementKeys(picker); // owned by the picker
    picker.setFrame(true);
    picker.setAutoFillBackground(true);
    new FormatFollower(picker, showDay); // owned by the picker
    picker.setEnabled(true);
    // A date field's own range narrows the picker's.
    QDate minimum = minimumPickerDate();
    QDate maximum = maximumPickerDate();
    if (const auto* dateField = qobject_cast<const WQLineEdit*>(field)) {
        if (dateField->minimumDate().isValid())
            minimum = std::clamp(dateField->minimumDate(), minimum, maximum);
        if (dateField->maximumDate().isValid())
            maximum = std::clamp(dateField->maximumDate(), minimum, maximum);
    }
    picker.setDateRange(minimum, maximum);
    picker.setDate(std::clamp(QDate::currentDate(), minimum, maximum));

    if (!field) {
        place = made.release();
        return qobject_cast<QDateEdit*>(place);
    }

    copyLookAndIdentity(*field, picker);
    QWidget* parent = field->parentWidget();
    QWidget* previous = field->previousInFocusChain();
    QWidget* next = field->nextInFocusChain();

    picker.setParent(parent);
    QDateEdit* const pickerPointer = made.release(); // owned by the parent from here on
    if (!placeInLayout(*field, picker, linkAndReplace)) {
        // Same bottom edge, 1 px taller and 4 px wider than the field.
        picker.setGeometry(frame.x(), frame.y() - 1, frame.width() + 4, frame.height() + 1);
    }
    if (parent && parent->isVisible())
        picker.show();

    // The field's editingFinished connections hear the picker too.
    QObject::connect(&picker, &QDateEdit::editingFinished, field, [field] {
        if (auto* lineEdit = qobject_cast<QLineEdit*>(field))
            emit lineEdit->editingFinished();
    });

    if (linkAndReplace) {
        field->hide();
        field->setParent(&picker);
        if (previous && previous != field)
            QWidget::setTabOrder(previous, &picker);
        if (next && next != field && next != &picker)
            QWidget::setTabOrder(&picker, next);
    } else {
        QWidget::setTabOrder(field, &picker);
    }

    place = pickerPointer;
    return pickerPointer;
}

QDateEdit* WQSetupDateField(QWidget*& place, bool linkAndReplace)
{
    return WQSetupExtendedDateField(place, linkAndReplace, true);
}

// A QDateEdit keeps its value in UTC, where local midnight east of Greenwich
// falls on the day before: the wall-clock date and time are carried across
// between the picker's frame and local time instead of the moment.
WQDate WQDateValue(const QDateEdit& picker)
{
    const QDateTime shown = picker.dateTime();
    return WQDate::dateWithNSDate(QDateTime(shown.date(), shown.time(), Qt::LocalTime));
}

void setWQDateValue(QDateEdit& picker, const WQDate& date)
{
    const QDateTime midnight = date.nsDate();
    if (midnight.isValid())
        picker.setDateTime(QDateTime(midnight.date(), midnight.time(), picker.timeSpec()));
}

std::optional<WQDate> WQDateValue(const WQLineEdit& field)
{
    const QVariant value = field.objectValue();
    if (value.metaType() == QMetaType::fromType<WQDate>())
        return value.value<WQDate>();
    return std::nullopt;
}

void setWQDateValue(WQLineEdit& field, const WQDate& date)
{
    field.setObjectValue(QVariant::fromValue(date));
}

} // namespace wq
