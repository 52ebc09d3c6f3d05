import QtQuick
import Corvane

// Says that a workspace was started.
Rectangle {
    id: pill

    implicitWidth: row.implicitWidth + 2 * Theme.fieldPadding
    implicitHeight: row.implicitHeight + 2 * Theme.spacingXS
    radius: height / 2
    color: Theme.faded(Theme.greenFill, 0.2)

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.spacingS

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 8
            height: 8
            radius: Theme.tinyRadius
            color: Theme.green

            SequentialAnimation on opacity {
                // Only where it is seen, and not for long: each step of it draws the window anew. An
                // animator would go on in a window that isn't drawn any more.
                running: pill.visible && pill.Window.visibility !== Window.Minimized && pill.Window.visibility !== Window.Hidden
                loops: 2

                NumberAnimation {
                    to: 0.35
                    duration: 1000
                    easing.type: Easing.InOutQuad
                }
                NumberAnimation {
                    to: 1
                    duration: 1000
                    easing.type: Easing.InOutQuad
                }
            }
        }
        BodyText {
            text: "Running"
            font.pixelSize: Theme.captionSize
            font.weight: Font.Medium
            color: Theme.green
        }
    }
}
