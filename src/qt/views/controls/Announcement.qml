import QtQuick

// Says texts to whoever uses a screen reader, wherever the keyboard is: such programs read out a
// notification that comes into sight. They ask for its text later, so each stays for a while and
// the next one waits.
Item {
    id: announcement

    property var waiting: []

    function say(text: string) {
        if (text === "")
            return;
        waiting.push(text);
        if (!turn.running)
            sayNext();
    }
    function sayNext() {
        visible = false;
        if (waiting.length === 0)
            return;
        Accessible.name = waiting.shift();
        visible = true;
        turn.start();
    }

    visible: false
    width: 1
    height: 1
    Accessible.role: Accessible.Notification

    Timer {
        id: turn

        interval: 2000
        onTriggered: announcement.sayNext()
    }
}
