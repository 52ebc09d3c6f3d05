import QtQuick
import Corvane

// A small turning ring, at the size of a symbol.
Item {
    id: spinner

    property color color: Theme.textOnTint

    implicitWidth: 16
    implicitHeight: 16

    Repeater {
        model: 8

        Rectangle {
            required property int index

            readonly property real angle: index * Math.PI / 4

            x: spinner.width / 2 + Math.cos(angle) * 6 - width / 2
            y: spinner.height / 2 + Math.sin(angle) * 6 - height / 2
            width: 3
            height: 3
            radius: 1.5
            color: spinner.color
            opacity: 0.2 + 0.1 * index
        }
    }

    RotationAnimator on rotation {
        running: spinner.visible
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
    }
}
