import QtQuick
import Corvane

// The badge of one application: its icon, and a mark that takes it away.
Rectangle {
    id: chip

    required property string appName
    required property bool isDefault
    required property string iconSource
    readonly property color hue: isDefault ? Theme.accent : Theme.secondaryLabel

    signal removed(byKey: bool)

    implicitWidth: content.implicitWidth + 2 * Theme.spacingS
    implicitHeight: 28
    radius: Theme.tinyRadius
    color: Theme.faded(hue, isDefault ? 0.1 : 0.15)
    border.width: 1
    border.color: Theme.faded(hue, isDefault ? 0.3 : 0.1)
    Accessible.role: Accessible.StaticText
    Accessible.name: appName

    Row {
        id: content

        anchors.centerIn: parent
        spacing: Theme.spacingXS

        ResourceIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "app"
            iconSource: chip.iconSource
            size: 20
        }
        Loader {
            visible: active
            active: !chip.isDefault
            anchors.verticalCenter: parent.verticalCenter

            sourceComponent: SymbolButton {
                implicitWidth: 18
                implicitHeight: 18
                symbol: "xmark"
                size: 10
                isBold: true
                tint: Theme.secondaryLabel
                tooltip: "Remove " + chip.appName
                onClicked: chip.removed(visualFocus)
                // The second press of two in a row isn't meant for what has come under the pointer.
                onDoubleClicked: {}
            }
        }
    }
}
