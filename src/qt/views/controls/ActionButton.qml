import QtQuick
import Corvane

// A button with a symbol, or a spinner in its place, and a title: white on its tint, or label on
// its ground.
PressButton {
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
    readonly property real titleX: symbol === "" ? 0 : symbolSize + 6
    readonly property real innerWidth: text === "" ? symbolSize : titleX + title.implicitWidth
    readonly property int contentWidth: Math.ceil(innerWidth) + 2 * (text === "" ? 8 : 14)

    implicitHeight: 32
    implicitWidth: contentWidth
    opacity: enabled ? 1 : 0.6
    Accessible.name: text !== "" ? text : tooltip
    Accessible.description: tooltip

    OnDemand {
        parent: button
        wanted: button.hovered && button.tooltip !== ""

        ThemedToolTip {
            text: button.tooltip
            visible: true
        }
    }
    OnDemand {
        parent: sign
        wanted: button.isBusy

        Spinner {
            anchors.centerIn: parent
            color: button.foreground
        }
    }
    OnDemand {
        parent: button.background
        wanted: button.visualFocus

        FocusRing {
            target: button
        }
    }

    SymbolText {
        id: sign

        // On whole pixels, as signs are drawn for them.
        x: Math.round((parent.width - button.innerWidth) / 2)
        width: button.symbolSize
        height: parent.height
        symbol: button.symbol
        text: button.isBusy || symbol === "" ? "" : Symbols.glyph(symbol)
        size: button.symbolSize
        color: button.foreground
    }
    Text {
        id: title

        x: sign.x + button.titleX
        height: parent.height
        verticalAlignment: Text.AlignVCenter
        text: button.text
        textFormat: Text.PlainText
        font.pixelSize: Theme.bodySize
        font.weight: Font.Medium
        color: button.foreground
        Accessible.ignored: true
    }

    background: Rectangle {
        readonly property color base: button.isProminent ? button.tint : button.isPlain && !button.hovered ? "transparent" : button.ground

        radius: Theme.smallRadius
        color: button.down ? Qt.darker(base, 1.2) : button.hovered ? Qt.darker(base, 1.07) : base
        border.width: button.isPlain ? 0 : 1
        border.color: button.isProminent ? Qt.darker(button.tint, 1.1) : Theme.separator
    }
}
