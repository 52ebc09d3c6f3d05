import QtQuick
import QtQuick.Controls.Basic
import Corvane

TextField {
    id: field

    implicitHeight: 30
    leftPadding: Theme.fieldPadding
    rightPadding: Theme.fieldPadding
    color: Theme.label
    placeholderTextColor: Theme.secondaryLabel
    selectionColor: Theme.blueFill
    selectedTextColor: Theme.textOnTint
    font.pixelSize: Theme.bodySize
    selectByMouse: true
    Accessible.name: placeholderText
    // Not by a key that is still held down from what led here.
    Keys.onReturnPressed: event => event.accepted = event.isAutoRepeat
    Keys.onEnterPressed: event => event.accepted = event.isAutoRepeat

    background: Rectangle {
        radius: Theme.smallRadius
        color: Theme.fieldBackground
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.accent : Theme.separator
    }
}
