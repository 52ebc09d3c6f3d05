import QtQuick
import Corvane

// Stands in for the rows where there are none.
Column {
    id: empty

    topPadding: Theme.spacingXXL
    bottomPadding: Theme.spacingXXL
    spacing: Theme.spacingM

    SymbolText {
        anchors.horizontalCenter: parent.horizontalCenter
        symbol: "folder.badge.plus"
        size: 40
        color: Theme.gray
    }
    BodyText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "No resources yet"
        font.pixelSize: 15
        font.weight: Font.Medium
    }
    BodyText {
        width: parent.width - 2 * Theme.spacingXL
        x: 18
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        text: "Drag & drop files, apps or folders from Finder to add resources"
        color: Theme.secondaryLabel
    }
    BodyText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Or use the 'Add Resource' button above"
        font.pixelSize: 12
        color: Theme.secondaryLabel
    }
}
