import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// One resource: a press launches it, or stops it while it runs.
AbstractButton {
    id: chip

    required property int index
    required property var modelData
    required property Item card
    readonly property bool isRunning: modelData.state === "running"
    readonly property bool isMarked: modelData.state === "startMarked"
    readonly property color stateColor: isRunning ? Theme.green : isMarked ? Theme.blue : Theme.gray
    readonly property real fill: Theme.dark ? 0.3 : 0.15

    implicitWidth: row.implicitWidth + 2 * 10
    implicitHeight: row.implicitHeight + 2 * 6
    text: modelData.name
    focusPolicy: Qt.StrongFocus
    scale: hovered ? 1.02 : 1
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: isRunning ? "Running" : ""
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()
    onClicked: card.workspaces.pressChip(card.index, index)

    Behavior on scale {
        NumberAnimation {
            duration: 150
            easing.type: Easing.InOutQuad
        }
    }
    ThemedToolTip {
        // Asked for when it is needed, as the answer takes a look at the installed applications.
        text: visible ? chip.card.workspaces.chipTooltip(chip.card.index, chip.index) : ""
        visible: chip.hovered
    }

    contentItem: Item {
        RowLayout {
            id: row

            anchors.centerIn: parent
            spacing: 8

            SymbolText {
                symbol: chip.modelData.symbol
                size: 16
                color: Theme.typeColor(chip.modelData.type)
            }
            Text {
                Layout.maximumWidth: 80
                text: chip.text
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 1
                font.pixelSize: 14
                font.weight: Font.Medium
                color: Theme.label
                Accessible.ignored: true
            }
            SymbolText {
                symbol: chip.isRunning ? "stop.fill" : "play.fill"
                size: 12
                color: chip.isRunning ? Theme.red : chip.hovered ? Theme.blue : Theme.secondaryLabel
                opacity: chip.hovered ? 1 : 0.7
                scale: chip.hovered ? 1.1 : 1

                Behavior on scale {
                    NumberAnimation {
                        duration: 150
                        easing.type: Easing.InOutQuad
                    }
                }
            }
        }
    }

    background: Rectangle {
        radius: Theme.smallRadius
        color: {
            if (chip.isRunning)
                return Theme.faded(Theme.green, chip.fill);
            if (chip.isMarked)
                return Theme.faded(Theme.blue, chip.fill);
            return Theme.dark ? Theme.controlBackground : Theme.textBackground;
        }
        border.width: 1
        border.color: chip.isRunning || chip.isMarked ? Theme.faded(chip.stateColor, 0.5) : Theme.separator

        FocusRing {
            target: chip
        }
    }
}
