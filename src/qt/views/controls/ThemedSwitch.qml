import QtQuick
import Corvane

// Shows what it is told to, and asks for the opposite when pressed.
PressButton {
    id: toggle

    required property bool isOn
    property color tint: Theme.blueFill
    property string tooltip: ""

    signal switched(on: bool)

    implicitWidth: 38
    implicitHeight: 22
    opacity: enabled ? 1 : 0.5
    spokenRole: Accessible.CheckBox
    isToggle: true
    isToggledOn: isOn
    onClicked: switched(!isOn)

    OnDemand {
        parent: toggle
        wanted: toggle.hovered && toggle.tooltip !== ""

        ThemedToolTip {
            text: toggle.tooltip
            visible: true
        }
    }
    OnDemand {
        parent: toggle.background
        wanted: toggle.visualFocus

        FocusRing {
            target: toggle
            radius: height / 2
        }
    }

    background: Rectangle {
        radius: height / 2
        color: toggle.isOn ? toggle.tint : Theme.switchOff

        Rectangle {
            x: toggle.isOn ? parent.width - width - 2 : 2
            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            radius: 9
            color: Theme.textOnTint

            Behavior on x {
                NumberAnimation {
                    duration: 120
                }
            }
        }
    }
}
