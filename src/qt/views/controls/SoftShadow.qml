import QtQuick

// The shadow of a rounded rectangle that it fills: 2 below it, and soft for 8 on either side of its
// edge.
Item {
    id: shadow

    required property color color
    required property int radius

    Repeater {
        id: layers

        model: 8

        Rectangle {
            required property int index
            readonly property int out: 8 - 2 * index

            x: -out
            y: -out + 2
            width: shadow.width + 2 * out
            height: shadow.height + 2 * out
            radius: Math.max(0, shadow.radius + out)
            color: Qt.rgba(shadow.color.r, shadow.color.g, shadow.color.b, shadow.color.a / layers.count)
        }
    }
}
