import QtQuick
import QtQuick.Layouts
import Corvane

// Offers for a while to bring back what was removed.
Rectangle {
    id: bar

    required property UndoModel undo
    // The text stays while the bar goes.
    property string last: ""
    readonly property bool isWanted: undo.text !== ""

    onIsWantedChanged: {
        if (isWanted)
            last = undo.text;
    }
    visible: opacity > 0
    opacity: isWanted ? 1 : 0
    implicitWidth: row.implicitWidth + 16 + 8
    implicitHeight: 44
    radius: Theme.radius
    color: Theme.fieldBackground
    border.width: 1
    border.color: Theme.separator
    Accessible.role: Accessible.Grouping
    Accessible.name: undo.text

    Behavior on opacity {
        NumberAnimation {
            duration: 120
        }
    }
    SoftShadow {
        anchors.fill: parent
        z: -1
        color: Theme.faded(Theme.shade, 0.2)
        radius: bar.radius
    }
    RowLayout {
        id: row

        x: 16
        height: parent.height
        spacing: Theme.spacingL

        BodyText {
            Layout.maximumWidth: Math.min(360, bar.Window.width - 160)
            text: bar.isWanted ? bar.undo.text : bar.last
            elide: Text.ElideMiddle
            maximumLineCount: 1
        }
        ActionButton {
            isPlain: true
            foreground: Theme.accent
            text: "Undo"
            tooltip: "Ctrl+Z"
            enabled: bar.isWanted
            onClicked: bar.undo.undo()
        }
    }
}
