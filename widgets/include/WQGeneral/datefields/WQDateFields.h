#pragma once
/// \file
/// Date pickers in place of text fields laid out for dates, and WQDate values
/// on date pickers and on formatted line edits.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/dates/WQDate.h>

#include <QDateEdit>

#include <optional>

namespace wq {

/// \addtogroup datefields
/// @{

class WQLineEdit;

/// `place` holds a line edit on entry and the new picker on return. The picker
/// takes the field's position (2 px wider on the right, 1 px taller at the
/// top), layout slot, size policy, font, object name, tips and properties; its
/// editingFinished also reaches the field's editingFinished connections.
/// With linkAndReplace the picker also takes the field's place in the focus
/// chain and the field leaves its parent (it lives on hidden, owned by the
/// picker); otherwise the field stays beside the picker. Without showDay the
/// picker shows year and month only, in the order of the user's short date
/// format (followed when the regional settings change). Dates run from
/// 1984-01-02 to 9999-12-31, within the field's own minimumDate and
/// maximumDate when it has them.
/// With no field in `place`, the picker has no parent and belongs to the caller.
WQ_WIDGETS_EXPORT QDateEdit* WQSetupExtendedDateField(QWidget*& place, bool linkAndReplace, bool showDay);
/// WQSetupExtendedDateField() with the day shown.
WQ_WIDGETS_EXPORT QDateEdit* WQSetupDateField(QWidget*& place, bool linkAndReplace);

/// The picker's date; midnight in the system time zone when written, so the
/// calendar date is the same whatever the zone.
WQ_WIDGETS_EXPORT WQDate WQDateValue(const QDateEdit& picker);
/// Shows date in the picker; a date past QDate's range leaves it unchanged.
WQ_WIDGETS_EXPORT void setWQDateValue(QDateEdit& picker, const WQDate& date);

/// The field's object value when it is a date.
WQ_WIDGETS_EXPORT std::optional<WQDate> WQDateValue(const WQLineEdit& field);
/// Sets the field's object value to date.
WQ_WIDGETS_EXPORT void setWQDateValue(WQLineEdit& field, const WQDate& date);

/// @}

} // namespace wq
