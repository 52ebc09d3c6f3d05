import QtQuick
import QtQuick.Templates as T
import Corvane

T.Menu {
    id: menu

    required property Item opener

    implicitWidth: Math.max(implicitBackgroundWidth, contentWidth + 2 * padding)
    implicitHeight: contentHeight + 2 * padding
    margins: 0
    padding: Theme.spacingXS
    onClosed: opener.forceActiveFocus(Qt.TabFocusReason)
    // A press beside it only closes it, and nothing below scrolls away from it.
    modal: true
    dim: false

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: contentHeight > height
        clip: true
    }
    background: Rectangle {
        implicitWidth: 160
        radius: Theme.mediumRadius
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.separator
    }
}
