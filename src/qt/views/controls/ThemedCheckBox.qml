import QtQuick
import Corvane

// Not a CheckBox: where assistive technology listens, Qt 6.4 leaks memory for each of those.
PressButton {
    id: box

    checkable: true
    // That is the answer of the alert it stands in.
    takesReturn: false
    padding: 0
    spacing: Theme.spacingM

    implicitWidth: contentItem.implicitWidth
    implicitHeight: 20
    spokenRole: Accessible.CheckBox
    isToggle: true
    isToggledOn: checked

    indicator: Rectangle {
        y: (box.height - height) / 2
        implicitWidth: 16
        implicitHeight: 16
        radius: Theme.tinyRadius
        color: box.checked ? Theme.blueFill : Theme.fieldBackground
        border.width: 1
        border.color: box.checked ? Theme.blueFill : Theme.secondaryLabel

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
        textFormat: Text.PlainText
        font.pixelSize: Theme.bodySize
        color: Theme.label
        Accessible.ignored: true
    }
}
