import QtQuick
import QtQuick.Controls
import WQGeneral

// A TextField that shows, reads and judges its text through one of the
// framework's formatters, keystroke for keystroke as the widgets' line edit
// does (see FormattedField): formatterKind and places choose the formatter,
// owner gives the money kinds their currency and typing mode, value is a
// number or a date. A refused edit or value says why in editRefused and
// valueRefused (AlertSheets.presentRefusal shows it).
TextField {
    id: field

    enum Kind { NoFormatter, Date, ExtendedDate, WholeNumber, Decimal, Money, CalculatingMoney, Custom }

    property alias formatterKind: driver.formatterKind
    property alias places: driver.places
    property alias owner: driver.owner
    property alias value: driver.value
    // The driver, for C++ (a formatter of its own: setFormatter()).
    readonly property FormattedField formatted: driver

    signal editRefused(string description)
    signal valueRefused(string description)
    signal refusalCleared()

    function validateEditing() { return driver.validateEditing() }
    function abortEditing() { driver.abortEditing() }
    function undoEdit() { driver.undoEdit() }
    function redoEdit() { driver.redoEdit() }

    FormattedField {
        id: driver
        textField: field
        onEditRefused: (description) => field.editRefused(description)
        onValueRefused: (description) => field.valueRefused(description)
        onRefusalCleared: field.refusalCleared()
    }
}
