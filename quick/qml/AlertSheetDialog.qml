import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import WQGeneral

// The dialog AlertSheets shows its sheets in, over the window: the title in
// bold, the message, and either Edit and Cancel or OK with "Don't show
// again". Return is the default button, Escape cancels.
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

    contentItem: ColumnLayout {
        spacing: 8
        focus: true
        Keys.onReturnPressed: dialog.accept()
        Keys.onEnterPressed: dialog.accept()

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
        }
    }

    footer: DialogButtonBox {
        Button {
            objectName: "defaultButton"
            text: (dialog.sheets && dialog.sheets.editCancel ? dialog.labels.edit : dialog.labels.ok) || ""
            DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole
        }
        Button {
            objectName: "cancelButton"
            visible: dialog.sheets ? dialog.sheets.editCancel : false
            text: dialog.labels.cancel || ""
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
        }
    }
}
