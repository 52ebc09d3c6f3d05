import QtQuick
import QtQuick.Controls.Basic

// A button without a look of its own, named by its text. Space, Return and what assists a user press
// it like the pointer; a key that is held down presses once.
AbstractButton {
    id: button

    // Whether Return presses it, rather than what the window does by Return.
    property bool takesReturn: true

    function press() {
        if (!enabled)
            return;
        if (checkable)
            toggle();
        clicked();
    }

    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: event => pressByKey(event)
    Keys.onEnterPressed: event => pressByKey(event)
    // A held key counts as pressed and let go of again and again.
    Keys.onSpacePressed: event => event.accepted = event.isAutoRepeat
    Keys.onReleased: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space

    function pressByKey(event: KeyEvent) {
        event.accepted = takesReturn;
        if (takesReturn && !event.isAutoRepeat)
            press();
    }
}
