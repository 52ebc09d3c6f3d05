import QtQuick
import Corvane

// What a collapsed card shows of a workspace with no resources.
BodyText {
    padding: Theme.spacingXXL
    horizontalAlignment: Text.AlignHCenter
    text: "No resources configured"
    font.pixelSize: 14
    color: Theme.gray
}
