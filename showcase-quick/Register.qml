import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import WQGeneral

// The Qt Quick showcase: a register of transactions and an entry row with a
// date field, a payee and an amount field that calculates. Everything works
// from the keyboard: Tab walks the row, Alt+D, Alt+P and Alt+A lead to the
// fields, Return in any of them records the transaction. Refusals show as
// alert sheets; the amount's can be silenced with "Don't show again".
ApplicationWindow {
    id: window
    width: 760
    height: 480
    visible: true
    title: "WQGeneral for Qt Quick"

    // A per-document currency, as an application keeps one per file.
    readonly property var swissFrancs: ({
        kWQCurrencyKey_UseSystem: 0, kWQCurrencyKey_Code: "CHF", NSCurrencySymbol: "CHF ",
        NSPositiveCurrencyFormatString: "$ #,##0.00", NSNegativeCurrencyFormatString: "-$ #,##0.00",
        NSThousandsSeparator: "'", NSDecimalSeparator: "."
    })
    property real balance: 0

    MoneyOwner {
        id: owner
        userInputLikeATM: atmTyping.checked
        currencySymbolDict: swissFrancsBox.checked ? window.swissFrancs : ({})
    }
    AlertSheets { id: sheets; objectName: "sheets" }
    ListModel { id: transactions; objectName: "transactions" }

    // Records the entry row when date, payee and amount are there and valid.
    function record() {
        if (!date.validateEditing() || !amount.validateEditing())
            return false
        if (payee.text.trim() === "")
            return sheets.sheetForBlankTextField(payee, "Payee")
        if (date.value === undefined || amount.value === undefined)
            return false
        balance += amount.value
        transactions.append({ when: date.text, payee: payee.text, amount: amount.value, balance: balance })
        payee.clear()
        amount.value = null
        date.forceActiveFocus(Qt.TabFocusReason)
        return true
    }
    function money(value) { return amount.formatted.displayString(value) }

    Component.onCompleted: {
        const samples = [[new Date(2026, 2, 1), "Opening balance", 2500], [new Date(2026, 2, 3), "Rent", -1200],
                         [new Date(2026, 2, 9), "Groceries", -86.4]]
        for (const [when, name, value] of samples) {
            balance += value
            transactions.append({ when: date.formatted.displayString(when), payee: name, amount: value, balance: balance })
        }
        date.forceActiveFocus(Qt.TabFocusReason)
    }

    header: ToolBar {
        RowLayout {
            anchors.fill: parent
            CheckBox { id: atmTyping; text: "ATM typing" }
            CheckBox { id: swissFrancsBox; text: "Swiss francs" }
            Item { Layout.fillWidth: true }
            Button {
                text: "Show all warnings again"
                enabled: sheets.suppressedKeys.length > 0
                onClicked: sheets.showAllWarningsAgain()
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 8

        ListView {
            id: register
            objectName: "register"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: transactions
            delegate: RowLayout {
                required property string when
                required property string payee
                required property real amount
                required property real balance
                width: ListView.view.width
                Label { text: when; Layout.preferredWidth: 110 }
                Label { text: payee; Layout.fillWidth: true; elide: Text.ElideRight }
                Label {
                    text: window.money(amount)
                    color: amount < 0 ? "firebrick" : palette.text
                    horizontalAlignment: Text.AlignRight
                    Layout.preferredWidth: 150
                }
                Label { text: window.money(balance); horizontalAlignment: Text.AlignRight; Layout.preferredWidth: 150 }
            }
            ScrollBar.vertical: ScrollBar {}
        }

        GridLayout {
            columns: 4
            Label { text: "Date" }
            Label { text: "Payee" }
            Label { text: "Amount" }
            Item { width: 1 }

            FormattedTextField {
                id: date
                objectName: "date"
                formatterKind: FormattedTextField.Date
                Layout.preferredWidth: 110
                Accessible.name: "Date"
                onAccepted: window.record()
                onEditRefused: (description) => sheets.presentRefusal(date, "Date", description)
            }
            TextField {
                id: payee
                objectName: "payee"
                Layout.fillWidth: true
                Accessible.name: "Payee"
                onAccepted: window.record()
            }
            FormattedTextField {
                id: amount
                objectName: "amount"
                formatterKind: FormattedTextField.CalculatingMoney
                owner: owner
                horizontalAlignment: TextInput.AlignRight
                Layout.preferredWidth: 180
                Accessible.name: "Amount"
                onAccepted: window.record()
                onEditRefused: (description) => sheets.presentRefusal(amount, "Amount", description)
            }
            Button { text: "Record"; onClicked: window.record() }
        }
    }

    Shortcut { sequence: "Alt+D"; onActivated: date.forceActiveFocus(Qt.ShortcutFocusReason) }
    Shortcut { sequence: "Alt+P"; onActivated: payee.forceActiveFocus(Qt.ShortcutFocusReason) }
    Shortcut { sequence: "Alt+A"; onActivated: amount.forceActiveFocus(Qt.ShortcutFocusReason) }
}
