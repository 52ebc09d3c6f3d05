import QtQuick
import QtQuick.Controls.Basic
import Corvane

// The entries of a folder: arrows, Return and the first letters of a name find one.
ListView {
    id: list

    required property PanelModel panel
    readonly property int rowsOnPage: Math.max(1, Math.floor(height / 28) - 1)

    function move(rows: int) {
        const from = panel.selected < 0 ? (rows > 0 ? -1 : count) : panel.selected;
        panel.select(Math.max(0, Math.min(count - 1, from + rows)));
    }

    function takeSelected() {
        panel.selected < 0 ? panel.confirm() : panel.activate(panel.selected);
    }

    // What was typed is the start of a path.
    signal pathBegun(text: string)

    clip: true
    topMargin: 4
    bottomMargin: 4
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    activeFocusOnTab: true
    model: panel
    Accessible.role: Accessible.List
    Accessible.name: "Entries"
    ScrollBar.vertical: ScrollBar {}

    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Down)
            move(1);
        else if (event.key === Qt.Key_Up && event.modifiers & Qt.AltModifier)
            panel.goUp();
        else if (event.key === Qt.Key_Up)
            move(-1);
        else if (event.key === Qt.Key_PageDown)
            move(rowsOnPage);
        else if (event.key === Qt.Key_PageUp)
            move(-rowsOnPage);
        else if (event.key === Qt.Key_Home)
            move(-count);
        else if (event.key === Qt.Key_End)
            move(count);
        else if (event.key === Qt.Key_Backspace)
            panel.goUp();
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            Qt.callLater(takeSelected);
        else if (panel.takesName && (event.text === "/" || event.text === "~"))
            pathBegun(event.text);
        else if (event.text >= " " && event.key !== Qt.Key_Delete)
            panel.typeAhead(event.text);
        else
            event.accepted = false;
    }
    Connections {
        target: list.panel

        function onChanged() {
            if (list.panel.selected >= 0)
                list.positionViewAtIndex(list.panel.selected, ListView.Contain);
        }
    }

    delegate: PanelEntry {
        width: list.width
        isSelected: list.panel.selected === index
        listHasFocus: list.activeFocus
        onPressed: {
            list.forceActiveFocus();
            list.panel.select(index);
        }
        onDoubleClicked: Qt.callLater(list.panel.activate, index)
    }
    BodyText {
        anchors.centerIn: parent
        visible: list.count === 0
        text: list.panel.emptyText
        color: Theme.secondaryLabel
    }
}
