import QtQuick
import QtQuick.Templates as T
import Corvane

T.TextField {
    id: field

    // What it shows until something else is written: by a keyboard, or by an assistive program, which doesn't edit.
    property string value
    signal written

    text: value
    onTextChanged: {
        if (text !== value)
            written();
    }
    implicitHeight: 30
    padding: 6
    leftPadding: Theme.fieldPadding
    rightPadding: Theme.fieldPadding
    verticalAlignment: TextInput.AlignVCenter
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

    Text {
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        height: field.height
        visible: field.length === 0 && field.preeditText === ""
        text: field.placeholderText
        textFormat: Text.PlainText
        font: field.font
        color: field.placeholderTextColor
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: Theme.fieldBackground
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.accent : Theme.separator
    }
}
