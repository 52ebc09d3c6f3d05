pragma Singleton

import QtQuick

// Colours, sizes and fonts of every view, for both appearances.
QtObject {
    id: theme

    property bool dark: false
    // Set before the user changes `dark`: then the colours change over, as on a spring that settles
    // in 0.3 seconds.
    property bool changesOver: false
    property real darkness: dark ? 1 : 0

    Behavior on darkness {
        enabled: theme.changesOver

        SpringAnimation {
            // A response of 0.3 and a damping of 0.8, in this type's steps of 16 milliseconds.
            spring: 7
            damping: 0.54
            epsilon: 0.005
            onRunningChanged: {
                if (!running)
                    theme.changesOver = false;
            }
        }
    }

    readonly property color windowBackground: mixed("#ECECEE", "#1E1E20")
    readonly property color underPageBackground: mixed("#DCDCE0", "#2B2B2F")
    readonly property color controlBackground: mixed("#F7F7F8", "#28282B")
    readonly property color textBackground: mixed("#FFFFFF", "#202023")
    readonly property color fieldBackground: mixed("#FFFFFF", "#2F2F33")
    readonly property color separator: mixed("#D4D4D8", "#3D3D42")
    readonly property color label: mixed("#1D1D1F", "#F2F2F4")
    readonly property color secondaryLabel: mixed("#626267", "#A9A9B0")
    readonly property color primary: mixed("#000000", "#FFFFFF")
    readonly property color accent: blue
    readonly property color textOnTint: "#FFFFFF"

    // As text and symbols on the backgrounds above.
    readonly property color blue: mixed("#0A5FCC", "#5CA0FF")
    readonly property color purple: mixed("#7D35B8", "#C58AF5")
    readonly property color green: mixed("#166B2C", "#4CD46A")
    readonly property color orange: mixed("#A85B00", "#FFA53D")
    readonly property color cyan: mixed("#0B6E84", "#4FCBE6")
    readonly property color red: mixed("#C42B1F", "#FF7066")
    readonly property color gray: secondaryLabel

    // As what white text, or a lot else, stands on.
    readonly property color dropRed: "#FF3B30"
    readonly property color dropBlue: "#0A7AFF"
    readonly property color switchOff: mixed("#B9B9BF", "#55555B")
    readonly property color scrollBar: mixed("#A3A3AA", "#68686F")
    readonly property color tipBackground: mixed("#FBFBFC", "#38383C")
    readonly property color shade: Qt.rgba(0, 0, 0, 0.3 + 0.2 * darkness)
    readonly property color greenFill: mixed("#2BA24A", "#238A40")
    readonly property color blueFill: mixed("#0A66DB", "#2A6FDB")
    readonly property color purpleFill: mixed("#8A3FC9", "#8D47C9")
    readonly property color redFill: mixed("#D12F23", "#CB3A30")

    // One scale of distances, with those of what is named.
    readonly property int spacingXXS: 2
    readonly property int spacingXS: 4
    readonly property int spacingS: 6
    readonly property int spacingM: 8
    readonly property int spacingL: 12
    readonly property int looseSpacing: 16
    readonly property int spacingXL: 18
    readonly property int spacingXXL: 24
    readonly property int fieldPadding: 10
    readonly property int sheetPadding: 20

    readonly property int tinyRadius: 4
    readonly property int smallRadius: 6
    readonly property int mediumRadius: 8
    readonly property int tileRadius: 10
    readonly property int radius: 12
    readonly property int largeRadius: 16

    readonly property int largeTitleSize: 22
    readonly property int titleSize: 17
    readonly property int headlineSize: 13
    readonly property int bodySize: 13
    readonly property int captionSize: 11
    readonly property int chipHeight: Math.max(16, Math.ceil(chipFont.height)) + 2 * spacingS
    readonly property FontMetrics chipFont: FontMetrics {
        font.pixelSize: 14
        font.weight: Font.Medium
    }

    readonly property var cardGradients: [
        ["#2F7DF0", "#A45EE0"],
        ["#F0508C", "#DE6F10"],
        ["#2A9D49", "#2F7DF0"],
        ["#9B55DC", "#F0508C"],
        ["#DE6F10", "#E5483E"],
        ["#2F7DF0", "#1E9BB8"]
    ]

    function mixed(lightName: string, darkName: string): color {
        const light = Qt.color(lightName);
        const dark = Qt.color(darkName);
        if (darkness <= 0)
            return light;
        if (darkness >= 1)
            return dark;
        return Qt.rgba(light.r + (dark.r - light.r) * darkness, light.g + (dark.g - light.g) * darkness, light.b + (dark.b - light.b) * darkness, 1);
    }

    function faded(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }

    // The colour of a resource's symbol, by its type.
    function typeColor(type: string): color {
        switch (type) {
        case "file":
            return green;
        case "folder":
            return orange;
        case "application":
            return blue;
        case "url":
            return cyan;
        case "terminal":
            return purple;
        default:
            return gray;
        }
    }
}
