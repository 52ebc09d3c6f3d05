import QtQuick
import QtQuick.Templates as T

// A button without a look of its own, named by its text. Space, Return and what assists a user press
// it like the pointer; a key that is held down presses once.
T.AbstractButton {
    id: button

    // What assistive programs hear of it. Where they come later than it, the toolkit puts a button's
    // own in the place of what `Accessible` was given.
    property int spokenRole: Accessible.Button
    property bool isToggle: false
    property bool isToggledOn: false
    // Whether Return presses it, rather than what the window does by Return.
    property bool takesReturn: true

    function press() {
        if (!enabled)
            return;
        if (checkable)
            toggle();
        clicked();
    }

    implicitWidth: Math.max(implicitBackgroundWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight, implicitContentHeight + topPadding + bottomPadding)
    focusPolicy: Qt.StrongFocus
    Accessible.role: spokenRole
    Accessible.checkable: isToggle
    Accessible.checked: isToggledOn
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
