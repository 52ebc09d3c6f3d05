pragma Singleton

import QtQuick

// Colours, sizes and fonts of every view, for both appearances.
QtObject {
    property bool dark: false

    readonly property color windowBackground: dark ? "#1E1E20" : "#ECECEE"
    readonly property color controlBackground: dark ? "#28282B" : "#F7F7F8"
    readonly property color textBackground: dark ? "#232326" : "#FFFFFF"
    readonly property color fieldBackground: dark ? "#2F2F33" : "#FFFFFF"
    readonly property color separator: dark ? "#3D3D42" : "#D4D4D8"
    readonly property color label: dark ? "#F2F2F4" : "#1D1D1F"
    readonly property color secondaryLabel: dark ? "#A6A6AD" : "#66666B"
    readonly property color accent: blue
    readonly property color textOnTint: "#FFFFFF"

    readonly property color blue: dark ? "#2F7DF0" : "#0A66DB"
    readonly property color purple: dark ? "#A45EE0" : "#8A3FC9"
    readonly property color green: dark ? "#4CD46A" : "#1B7F38"
    readonly property color orange: dark ? "#FF9F2E" : "#F08A00"
    readonly property color yellow: dark ? "#FFCC33" : "#B07800"
    readonly property color red: dark ? "#E5483E" : "#D92D20"

    readonly property int radius: 12
    readonly property int smallRadius: 6
    readonly property int titleSize: 22
    readonly property int cardTitleSize: 17
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
}
