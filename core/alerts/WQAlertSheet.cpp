#include <WQGeneral/alerts/WQAlertSheet.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/platform/WQLocalizedText.h>

namespace wq {
namespace {

WQAlertSheet editCancel(const QString& title, const QString& message)
{
    return {WQAlertSheet::Buttons::EditCancel, title, message, QString()};
}

std::optional<WQAlertSheet> silenceable(const QString& title, const QString& message, const QString& key)
{
    if (WQWarningSuppression::isSuppressed(key))
        return std::nullopt;
    return WQAlertSheet{WQAlertSheet::Buttons::OKWithDontShowAgain, title, message, key};
}

QString decimalMessage(const QString& atmText, const QString& text, const QString& name, bool asATM)
{
    // The separator is passed in ATM mode too, and then not used.
    return WQFormatTemplate(asATM ? atmText : text, {name, WQDecimalFormatter::systemDecimalSeparator()});
}

} // namespace

WQAlertSheet WQAlertSheet::forBlankTextField(const QString& name)
{
    return editCancel(WQFormatTemplate(WQStrings::tr("The %@ field is blank."), {name}),
                      WQStrings::tr("This field can not be left empty."));
}

WQAlertSheet WQAlertSheet::forNegativeTextField(const QString& name)
{
    return editCancel(WQFormatTemplate(WQStrings::tr("The %@ field is negative."), {name}),
                      WQStrings::tr("This field can not be negative."));
}

WQAlertSheet WQAlertSheet::forNegativeOrZeroTextField(const QString& name)
{
    return editCancel(WQFormatTemplate(WQStrings::tr("The %@ field is negative or zero."), {name}),
                      WQStrings::tr("This field can not be negative or zero."));
}

std::optional<WQAlertSheet> WQAlertSheet::forIntegerTextFieldValidationFailure(const QString& name,
                                                                               const QString& errorDescription)
{
    return silenceable(
        errorDescription,
        WQFormatTemplate(WQStrings::tr("The %@ text field accepts any of the digits \"0\" through \"9\"."), {name}),
        kDefaultsKey_IntegerWarning);
}

std::optional<WQAlertSheet> WQAlertSheet::forDecimalColumnValidationFailure(const QString& name,
                                                                            const QString& errorDescription,
                                                                            bool asATM)
{
    return silenceable(
        errorDescription,
        decimalMessage(WQStrings::tr("The %@ column accepts any of the digits \"0\" through \"9\" and the negative "
                                     "sign \"-\"."),
                       WQStrings::tr("The %@ column accepts any of the digits \"0\" through \"9\", the negative sign "
                                     "\"-\" and the decimal separator \"%@\"."),
                       name, asATM),
        kDefaultsKey_DecimalWarning);
}

std::optional<WQAlertSheet> WQAlertSheet::forDecimalFieldValidationFailure(const QString& name,
                                                                           const QString& errorDescription,
                                                                           bool asATM)
{
    return silenceable(
        errorDescription,
        decimalMessage(WQStrings::tr("The %@ text field accepts any of the digits \"0\" through \"9\" and the "
                                     "negative sign \"-\"."),
                       WQStrings::tr("The %@ text field accepts any of the digits \"0\" through \"9\", the negative "
                                     "sign \"-\" and the decimal separator \"%@\"."),
                       name, asATM),
        kDefaultsKey_DecimalWarning);
}

std::optional<WQAlertSheet> WQAlertSheet::forDateField(bool withField, const QString& name,
                                                       const QString& dateSeparator, const QString& errorDescription)
{
    const QString message = WQFormatTemplate(
        WQStrings::tr(
            "The %@ text field accepts any of the digits \"0\" through \"9\" and the separator \"%@\".  You can "
            "also use the \"+\" and \"=\" keys to increment the day; \"-\" key to decrement the day; \"option +\" "
            "and \"option =\" to increment the month; \"option -\" to decrement the month; \"t\" sets the date to "
            "today.\n\nThe date must be entered as a day, month, and year.  The order of the three values depends on "
            "your Short Date settings in the International pane of System Preferences."),
        {name, dateSeparator});
    if (withField)
        return editCancel(errorDescription, message);
    return silenceable(errorDescription, message, kDefaultsKey_DateWarning);
}

} // namespace wq
