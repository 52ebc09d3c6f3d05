import QtQuick
import QtQuick.Layouts
import Corvane

// The name to save under, or a path to open.
RowLayout {
    id: row

    required property PanelModel panel

    // Takes the keyboard, with the name selected but for its extension.
    function start() {
        field.forceActiveFocus();
        const dot = field.text.lastIndexOf(".");
        field.select(0, dot > 0 ? dot : field.text.length);
    }

    function startPath(text: string) {
        field.forceActiveFocus();
        field.clear();
        field.insert(0, text);
        panel.name = text;
    }

    spacing: 10

    BodyText {
        id: label

        text: row.panel.isSaving ? "Save As:" : "Name or path:"
        Accessible.ignored: true
    }
    ThemedTextField {
        id: field

        Layout.fillWidth: true
        text: row.panel.name
        Accessible.name: label.text
        onTextEdited: row.panel.name = text
        onAccepted: Qt.callLater(row.panel.confirm)
    }
}
