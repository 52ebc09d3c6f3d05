import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// A button with a symbol, or a spinner in its place, and a title: white on its tint, or label on
// its ground.
AbstractButton {
    id: button

    property string symbol: ""
    property int symbolSize: 16
    property bool isBusy: false
    property bool isProminent: false
    // With no ground and no outline of its own.
    property bool isPlain: false
    property color tint: Theme.blueFill
    property color ground: Theme.controlBackground
    property color foreground: isProminent ? Theme.textOnTint : Theme.label
    property string tooltip: ""
    readonly property int contentWidth: Math.ceil(row.implicitWidth) + 2 * (text === "" ? 8 : 14)

    implicitHeight: 32
    implicitWidth: contentWidth
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.6
    Accessible.role: Accessible.Button
    Accessible.name: text !== "" ? text : tooltip
    Accessible.description: tooltip
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    ThemedToolTip {
        text: button.tooltip
        visible: button.tooltip !== "" && button.hovered
    }

    contentItem: Item {
        RowLayout {
            id: row

            anchors.centerIn: parent
            spacing: 6

            Spinner {
                visible: button.isBusy
                color: button.foreground
            }
            SymbolText {
                visible: !button.isBusy && button.symbol !== ""
                symbol: button.symbol
                size: button.symbolSize
                color: button.foreground
            }
            Text {
                visible: text !== ""
                text: button.text
                font.pixelSize: Theme.bodySize
                font.weight: Font.Medium
                color: button.foreground
                Accessible.ignored: true
            }
        }
    }

    background: Rectangle {
        readonly property color base: button.isProminent ? button.tint : button.isPlain && !button.hovered ? "transparent" : button.ground

        radius: Theme.smallRadius
        color: button.down ? Qt.darker(base, 1.2) : button.hovered ? Qt.darker(base, 1.07) : base
        border.width: button.isPlain ? 0 : 1
        border.color: button.isProminent ? Qt.darker(button.tint, 1.1) : Theme.separator

        FocusRing {
            target: button
        }
    }
}
