import QtQuick
import QtQuick.Controls.Basic

// A button without a look of its own, named by its text. Space and Return press it like the pointer.
AbstractButton {
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: event => pressByKey(event)
    Keys.onEnterPressed: event => pressByKey(event)

    // A key that is held down presses once.
    function pressByKey(event: KeyEvent) {
        if (!event.isAutoRepeat)
            clicked();
    }
}
