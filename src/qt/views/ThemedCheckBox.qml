import QtQuick
import QtQuick.Controls.Basic
import Corvane

CheckBox {
    id: box

    padding: 0
    spacing: 8

    indicator: Rectangle {
        x: box.leftPadding
        y: (box.height - height) / 2
        implicitWidth: 16
        implicitHeight: 16
        radius: 4
        color: box.checked ? Theme.accent : Theme.fieldBackground
        border.width: 1
        border.color: box.checked ? Theme.accent : Theme.secondaryLabel

        Rectangle {
            anchors.centerIn: parent
            visible: box.checked
            width: 8
            height: 8
            radius: 2
            color: Theme.textOnTint
        }
        FocusRing {
            target: box
        }
    }
    contentItem: Text {
        leftPadding: box.indicator.width + box.spacing
        verticalAlignment: Text.AlignVCenter
        text: box.text
        font.pixelSize: Theme.bodySize
        color: Theme.label
    }
}
