import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Corvane

// A button with a symbol, or a spinner in its place, and a title.
AbstractButton {
    id: button

    property string symbol: ""
    property int symbolSize: 16
    property bool isBusy: false
    property bool isProminent: true
    property color tint: Theme.accent
    property string tooltip: ""

    implicitHeight: 32
    readonly property int contentWidth: Math.ceil(row.implicitWidth) + 2 * 14
    implicitWidth: contentWidth
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.6
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: tooltip

    ToolTip.text: tooltip
    ToolTip.visible: tooltip !== "" && hovered
    ToolTip.delay: 600

    contentItem: Item {
        RowLayout {
            id: row

            anchors.centerIn: parent
            spacing: 6

            Spinner {
                visible: button.isBusy
                color: title.color
            }
            SymbolText {
                visible: !button.isBusy && button.symbol !== ""
                symbol: button.symbol
                size: button.symbolSize
                color: title.color
            }
            Text {
                id: title

                visible: text !== ""
                text: button.text
                font.pixelSize: Theme.bodySize
                font.weight: Font.Medium
                color: button.isProminent ? Theme.textOnTint : Theme.label
                Accessible.ignored: true
            }
        }
    }

    background: Rectangle {
        radius: Theme.smallRadius
        color: {
            const base = button.isProminent ? button.tint : Theme.controlBackground;
            if (button.down)
                return Qt.darker(base, 1.2);
            return button.hovered ? Qt.darker(base, 1.08) : base;
        }
        border.width: 1
        border.color: button.isProminent ? Qt.darker(button.tint, 1.1) : Theme.separator

        FocusRing {
            target: button
        }
    }
}
