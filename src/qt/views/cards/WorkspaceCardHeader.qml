import QtQuick
import Corvane

// What a workspace is called, whether it runs, and what can be done with it.
Item {
    id: header

    required property WorkspaceCardData card

    // On the button that starts or finishes the workspace.
    function takeKeyboard() {
        action.forceActiveFocus(Qt.TabFocusReason);
    }

    // Where titles and controls have no room side by side, these go below.
    readonly property real room: width - 2 * Theme.spacingXL
    readonly property real controlsWidth: (action.item ? action.item.naturalWidth : 0) + toggle.implicitWidth + 28 + 2 * Theme.spacingL // qmllint disable
    readonly property bool isStacked: controlsWidth + 36 + 2 * Theme.spacingL + 160 > room

    implicitHeight: 2 * Theme.spacingXL + (isStacked ? Math.max(tile.height, titles.height) + 12 + controls.height : Math.max(tile.height, titles.height))

    GradientTile {
        id: tile

        x: 18
        y: header.isStacked ? 18 : (parent.height - height) / 2
        width: 36
        height: 36
        symbol: header.card.icon
        gradientIndex: header.card.gradient
    }
    Item {
        id: titles

        x: 18 + 36 + 12
        y: header.isStacked ? 18 + Math.max(0, (tile.height - height) / 2) : (parent.height - height) / 2
        width: header.room - 36 - 12 - (header.isStacked ? 0 : header.controlsWidth + 12)
        height: name.height + (description.visible ? 2 + description.height : 0)

        ElidedText {
            id: name

            width: parent.width
            text: header.card.name
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
        }
        ElidedText {
            id: description

            anchors.bottom: parent.bottom
            width: parent.width
            visible: text !== ""
            text: header.card.description
            wrapMode: Text.Wrap
            maximumLineCount: 3
            font.pixelSize: Theme.captionSize
            color: Theme.secondaryLabel
        }
    }
    Flow {
        id: controls

        x: 18 + header.room - width
        y: header.isStacked ? parent.height - 18 - height : (parent.height - height) / 2
        width: Math.min(header.room, header.controlsWidth)
        spacing: Theme.spacingL

        // The keyboard stays with the button that a start or finish has changed.
        Loader {
            id: action

            width: item ? Math.min(header.room, item.naturalWidth) : 0 // qmllint disable
            sourceComponent: header.card.isRunning ? whileRunning : otherwise
        }
        ActionButton {
            id: toggle

            symbol: header.card.isExpanded ? "chevron.up" : "chevron.down"
            text: "Resources"
            foreground: header.card.isExpanded ? Theme.blue : Theme.label
            readonly property bool isExpanded: header.card.isExpanded
            Accessible.description: header.card.name
            onClicked: header.card.toggle()
        }
        Item {
            width: 28
            height: 32

            WorkspaceMenuButton {
                anchors.verticalCenter: parent.verticalCenter
                card: header.card
            }
        }
    }
    HairLine {
        anchors.bottom: parent.bottom
        x: 1
        width: parent.width - 2
    }

    Component {
        id: otherwise

        ActionButton {
            readonly property real naturalWidth: implicitWidth

            focus: true
            enabled: !header.card.isLoading
            implicitWidth: Math.max(120, contentWidth)
            isProminent: true
            isBusy: header.card.isLoading
            symbol: "play.fill"
            text: header.card.startTitle
            Accessible.description: header.card.name
            onClicked: header.card.workspaces.start(header.card.workspaceId)
        }
    }
    Component {
        id: whileRunning

        RunningControls {
            card: header.card
        }
    }
}
