import QtQuick
import QtQuick.Templates as T
import Corvane

// Shows and moves what part of a list is in sight.
T.ScrollBar {
    id: bar

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 2
    visible: policy !== T.ScrollBar.AlwaysOff
    minimumSize: orientation === Qt.Vertical ? width / height : height / width

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? Theme.secondaryLabel : Theme.scrollBar
        // Seen where there is more than fits.
        visible: bar.size < 1
    }
}
