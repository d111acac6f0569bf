// Dates in the entry row: a text field typed in the user's short date order
// with the increment keys, and a date picker set up in place of a text field.

#include "KeyTyping.h"
#include "ShowcaseText.h"
#include "RegisterWindow.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QApplication>
#include <QDateEdit>

namespace showcase {
namespace {

class DateFields : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        _formatter = std::make_shared<wq::WQDateFormatter>(wq::WQDateFormatter::shortDateFormat());
        _field = new wq::WQLineEdit(_formatter, window.entryRow());
        _field->setObjectName(QStringLiteral("date"));
        // Room for the longest short date of any regional settings.
        _field->setMinimumWidth(_field->fontMetrics().horizontalAdvance(QStringLiteral("00.00.0000")) + 12);
        _field->setToolTip(Text::tr("+ or = next day, - previous day, Alt for months, t today"));
        wq::setWQDateValue(*_field, wq::WQDate::date().value_or(wq::WQDate(2026, 3, 15)));
        window.addFieldGroup(Text::tr("Date"), _field, QStringLiteral("Date"), 0);

        // The picker takes the place of a text field laid out for it.
        auto* laidOut = new wq::WQLineEdit(window.entryRow());
        laidOut->setObjectName(QStringLiteral("cleared"));
        window.addFieldGroup(Text::tr("Cleared on"), laidOut, QString(), 1);
        QWidget* place = laidOut;
        _picker = wq::WQSetupDateField(place, true);
        _picker->setToolTip(
            Text::tr("When the bank cleared the transaction; the arrows step the part under the cursor"));
        wq::setWQDateValue(*_picker, wq::WQDate::date().value_or(wq::WQDate(2026, 3, 15)));

        // A change of regional settings changes the order typed; the field
        // shows its date again by itself.
        _localeObservation.observe(wq::kWQNotif_CurrentLocaleDidChange, nullptr, [this](const wq::WQNotification&) {
            _formatter->setDateFormat(wq::WQDateFormatter::shortDateFormat());
        });
    }

    QList<TourStep> tourSteps(RegisterWindow& window) override
    {
        wq::WQLineEdit* field = _field;
        QDateEdit* picker = _picker;
        auto type = [field](const QString& keys) {
            return [field, keys] {
                field->setFocus();
                typeText(field, keys);
            };
        };
        auto key = [field](Qt::Key k, Qt::KeyboardModifiers modifiers, const QString& text) {
            return [field, k, modifiers, text] {
                field->setFocus();
                pressKey(field, k, modifiers, text);
            };
        };
        auto region = [field](const QString& name) {
            return [field, name] {
                if (name.isEmpty())
                    wq::WQRegionalSettings::resetToEnvironment();
                else
                    wq::WQRegionalSettings::setAllLocales(name);
                field->setFocus();
            };
        };
        return {
            {QStringLiteral("date field: select all, type 3/15/26"), field,
             [field] {
                 field->setFocus();
                 field->selectAll();
                 typeText(field, QStringLiteral("3/15/26"));
             }},
            {QStringLiteral("date field: type + (next day)"), field, type(QStringLiteral("+"))},
            {QStringLiteral("date field: Alt+= (next month)"), field, key(Qt::Key_Equal, Qt::AltModifier, "=")},
            {QStringLiteral("date field: type - (previous day)"), field, type(QStringLiteral("-"))},
            {QStringLiteral("date field: type t (today)"), field, type(QStringLiteral("t"))},
            {QStringLiteral("date field: type a letter"), field, type(QStringLiteral("q"))},
            {QStringLiteral("date field: type a third /"), field, type(QStringLiteral("/"))},
            {QStringLiteral("date field: select all, type 7/4 and Return"), field,
             [field] {
                 field->setFocus();
                 field->selectAll();
                 typeText(field, QStringLiteral("7/4"));
                 pressKey(field, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
             }},
            {QStringLiteral("date field: clear it and press Return"), field,
             [field] {
                 field->setFocus();
                 field->selectAll();
                 pressKey(field, Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b"));
                 pressKey(field, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
             }},
            {QStringLiteral("date field: type 2/29 and Return"), field,
             [field] {
                 typeText(field, QStringLiteral("2/29"));
                 pressKey(field, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
             }},
            {QStringLiteral("date field: select all, type 12/31 and Enter the row"), field,
             [field, &window] {
                 field->setFocus();
                 field->selectAll();
                 typeText(field, QStringLiteral("12/31"));
                 window.enterTransaction();
             }},
            {QStringLiteral("picker: Up arrow steps the month"), picker,
             [picker] {
                 picker->setFocus();
                 picker->setSelectedSection(QDateTimeEdit::MonthSection);
                 pressKey(picker, Qt::Key_Up);
             }},
            {QStringLiteral("regional settings: de_DE"), field, region(QStringLiteral("de_DE"))},
            {QStringLiteral("date field: select all, type 15.3.26"), field,
             [field] {
                 field->setFocus();
                 field->selectAll();
                 typeText(field, QStringLiteral("15.3.26"));
             }},
            {QStringLiteral("date field: type + (next day)"), field, type(QStringLiteral("+"))},
            {QStringLiteral("date field: Alt+- (previous month)"), field, key(Qt::Key_Minus, Qt::AltModifier, "-")},
            {QStringLiteral("date field: type a /"), field, type(QStringLiteral("/"))},
            {QStringLiteral("regional settings: back to the environment's"), field, region(QString())},
        };
    }

private:
    std::shared_ptr<wq::WQDateFormatter> _formatter;
    wq::WQLineEdit* _field = nullptr;
    QDateEdit* _picker = nullptr;
    wq::WQObservation _localeObservation{wq::WQNotificationCenter::distributedCenter()};
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeDateFields()
{
    return std::make_unique<DateFields>();
}

} // namespace showcase
