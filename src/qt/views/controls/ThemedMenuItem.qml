import QtQuick
import QtQuick.Templates as T
import Corvane

T.MenuItem {
    id: item

    property bool isDestructive: false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 28
    // As a button's.
    property bool isToggle: false
    property bool isToggledOn: false

    Accessible.checkable: isToggle
    Accessible.checked: isToggledOn
    leftPadding: Theme.fieldPadding
    rightPadding: Theme.fieldPadding
    Accessible.name: text

    function press() {
        if (enabled)
            triggered();
    }

    contentItem: Text {
        opacity: item.enabled ? 1 : 0.5
        text: item.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        font.pixelSize: Theme.bodySize
        color: item.highlighted ? Theme.textOnTint : item.isDestructive ? Theme.red : Theme.label
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: item.isDestructive ? Theme.redFill : Theme.blueFill
        visible: item.highlighted
    }
}
