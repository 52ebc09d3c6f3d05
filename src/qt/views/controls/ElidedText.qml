import QtQuick
import Corvane

// One line of text, unless told otherwise; where it has no room, the pointer brings all of it.
BodyText {
    id: line

    elide: Text.ElideRight
    maximumLineCount: 1

    HoverHandler {
        id: pointer

        enabled: line.truncated
    }
    OnDemand {
        parent: line
        wanted: pointer.hovered

        ThemedToolTip {
            text: line.text
            visible: true
        }
    }
}
