import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import WQGeneral

// The dialog AlertSheets shows its sheets in, over the window: the title in
// bold, the message, and either Edit and Cancel or OK with "Don't show
// again". Return is the default button, Escape cancels, Tab goes round the
// check box and the buttons (and never leaves the dialog).
Dialog {
    id: dialog

    property AlertSheets sheets
    readonly property var labels: sheets ? sheets.labels : ({})

    anchors.centerIn: parent
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    title: Qt.application.displayName

    onAboutToShow: dontShowAgain.checked = false
    onAccepted: if (sheets) sheets.finish(false, dontShowAgain.checked)
    onRejected: if (sheets) sheets.finish(true, dontShowAgain.checked)

    // The first of the check box and the buttons that shows.
    function focusFirst(reason) {
        (dontShowAgain.visible ? dontShowAgain : defaultButton).forceActiveFocus(reason)
    }

    contentItem: ColumnLayout {
        spacing: 8
        focus: true
        Keys.onReturnPressed: dialog.accept()
        Keys.onEnterPressed: dialog.accept()
        Keys.onTabPressed: dialog.focusFirst(Qt.TabFocusReason)
        Keys.onBacktabPressed: (cancelButton.visible ? cancelButton : defaultButton).forceActiveFocus(Qt.BacktabFocusReason)

        Label {
            objectName: "sheetTitle"
            text: dialog.sheets ? dialog.sheets.title : ""
            textFormat: Text.PlainText
            font.bold: true
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.maximumWidth: 380
        }
        Label {
            objectName: "sheetMessage"
            text: dialog.sheets ? dialog.sheets.message : ""
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.preferredWidth: 380
        }
        CheckBox {
            id: dontShowAgain
            objectName: "dontShowAgain"
            visible: dialog.sheets ? !dialog.sheets.editCancel : false
            text: dialog.labels.dontShowAgain || ""
            KeyNavigation.tab: defaultButton
            KeyNavigation.backtab: defaultButton
            Keys.onReturnPressed: dialog.accept()
            Keys.onEnterPressed: dialog.accept()
        }
    }

    footer: DialogButtonBox {
        Button {
            id: defaultButton
            objectName: "defaultButton"
            text: (dialog.sheets && dialog.sheets.editCancel ? dialog.labels.edit : dialog.labels.ok) || ""
            DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole
            KeyNavigation.tab: cancelButton.visible ? cancelButton : dontShowAgain.visible ? dontShowAgain : defaultButton
            KeyNavigation.backtab: dontShowAgain.visible ? dontShowAgain : cancelButton.visible ? cancelButton : defaultButton
            Keys.onReturnPressed: dialog.accept()
            Keys.onEnterPressed: dialog.accept()
        }
        Button {
            id: cancelButton
            objectName: "cancelButton"
            visible: dialog.sheets ? dialog.sheets.editCancel : false
            text: dialog.labels.cancel || ""
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
            KeyNavigation.tab: defaultButton
            KeyNavigation.backtab: defaultButton
            Keys.onReturnPressed: dialog.reject()
            Keys.onEnterPressed: dialog.reject()
        }
    }
}
