pragma Singleton

import QtQuick

// Colours, sizes and fonts of every view, for both appearances.
QtObject {
    property bool dark: false

    readonly property color windowBackground: dark ? "#1E1E20" : "#ECECEE"
    readonly property color underPageBackground: dark ? "#2B2B2F" : "#DCDCE0"
    readonly property color controlBackground: dark ? "#28282B" : "#F7F7F8"
    readonly property color textBackground: dark ? "#202023" : "#FFFFFF"
    readonly property color fieldBackground: dark ? "#2F2F33" : "#FFFFFF"
    readonly property color separator: dark ? "#3D3D42" : "#D4D4D8"
    readonly property color label: dark ? "#F2F2F4" : "#1D1D1F"
    readonly property color secondaryLabel: dark ? "#A9A9B0" : "#626267"
    readonly property color primary: dark ? "#FFFFFF" : "#000000"
    readonly property color accent: blue
    readonly property color textOnTint: "#FFFFFF"

    // As text and symbols on the backgrounds above.
    readonly property color blue: dark ? "#5CA0FF" : "#0A5FCC"
    readonly property color purple: dark ? "#C58AF5" : "#7D35B8"
    readonly property color green: dark ? "#4CD46A" : "#18722F"
    readonly property color orange: dark ? "#FFA53D" : "#A85B00"
    readonly property color cyan: dark ? "#4FCBE6" : "#0B6E84"
    readonly property color red: dark ? "#FF7066" : "#C42B1F"
    readonly property color gray: secondaryLabel

    // As what white text stands on.
    readonly property color blueFill: dark ? "#2A6FDB" : "#0A66DB"
    readonly property color purpleFill: dark ? "#8D47C9" : "#8A3FC9"
    readonly property color redFill: dark ? "#CB3A30" : "#D12F23"

    readonly property int radius: 12
    readonly property int smallRadius: 6
    readonly property int largeTitleSize: 22
    readonly property int titleSize: 17
    readonly property int headlineSize: 13
    readonly property int bodySize: 13
    readonly property int captionSize: 11

    readonly property var cardGradients: [
        ["#2F7DF0", "#A45EE0"],
        ["#F0508C", "#F5922A"],
        ["#34B455", "#2F7DF0"],
        ["#9B55DC", "#F0508C"],
        ["#F5922A", "#E5483E"],
        ["#2F7DF0", "#2FB8D6"]
    ]

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
