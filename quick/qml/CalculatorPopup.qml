import QtQuick
import QtQuick.Controls
import WQGeneral

// The calculator's paper tape over the field that opened it (its parent):
// the bottom edge on the field's, the operator column to its left, the
// numbers so far, the editing field for the next one and, below a line, the
// running total. It grows upwards by one row per operator.
Popup {
    id: popup

    property Calculator calculator
    readonly property int rows: calculator ? calculator.operators.length : 1
    readonly property real lineHeight: Math.ceil(metrics.height) + 6
    readonly property real operatorWidth: 16
    readonly property real trailingGap: 2

    x: -(operatorWidth + trailingGap)
    y: (parent ? parent.height : 0) - height
    width: (parent ? parent.width : 120) + operatorWidth + trailingGap
    height: (rows + 2) * lineHeight + 6
    padding: 0
    focus: true
    closePolicy: Popup.CloseOnPressOutside
    background: Rectangle {
        color: popup.palette.base
        border.color: popup.palette.mid
    }

    FontMetrics {
        id: metrics
        font: popup.font
    }

    Item {
        anchors.fill: parent
        Accessible.role: Accessible.Pane
        Accessible.name: popup.calculator ? popup.calculator.labels.calculator : ""

        Repeater {
            model: popup.calculator ? popup.calculator.numbers : []
            TextInput {
                required property int index
                required property string modelData
                x: popup.operatorWidth
                y: index * popup.lineHeight
                width: popup.width - popup.operatorWidth - popup.trailingGap
                height: popup.lineHeight
                text: modelData
                readOnly: true
                selectByMouse: true
                activeFocusOnPress: false
                horizontalAlignment: TextInput.AlignRight
                verticalAlignment: TextInput.AlignVCenter
                color: popup.palette.text
                font: popup.font
            }
        }
        Repeater {
            model: popup.calculator ? popup.calculator.operators : []
            Text {
                required property int index
                required property string modelData
                x: 4
                y: (index + 1) * popup.lineHeight
                width: popup.operatorWidth - 4
                height: popup.lineHeight
                text: modelData
                verticalAlignment: Text.AlignVCenter
                color: popup.palette.text
                font: popup.font
            }
        }
        FormattedTextField {
            objectName: "editingField"
            x: popup.operatorWidth
            y: popup.rows * popup.lineHeight
            width: popup.width - popup.operatorWidth - popup.trailingGap
            height: popup.lineHeight
            padding: 0
            background: null
            font: popup.font
            horizontalAlignment: TextInput.AlignRight
            verticalAlignment: TextInput.AlignVCenter
            Accessible.name: popup.calculator ? popup.calculator.labels.nextNumber : ""
            Accessible.description: popup.calculator ? popup.calculator.spokenTotal : ""
        }
        Rectangle {
            x: 4
            y: popup.height - popup.lineHeight - 1
            width: popup.width - 8
            height: 1
            color: popup.palette.mid
        }
        Text {
            objectName: "total"
            x: 0
            y: popup.height - popup.lineHeight
            width: popup.width - popup.trailingGap
            height: popup.lineHeight
            text: popup.calculator ? popup.calculator.totalText : ""
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            color: popup.palette.text
            font: popup.font
            Accessible.name: popup.calculator ? popup.calculator.labels.total : ""
        }
    }
}
