import QtQuick

// Makes what is in it only while it is wanted. Not a Loader, which is an item even when it is empty;
// a list of cards has hundreds of these.
QtObject {
    id: lazy

    required property Item parent
    required property bool wanted
    default property Component content
    property QtObject made: null

    onWantedChanged: {
        if (wanted) {
            made = content.createObject(parent);
        } else if (made) {
            made.destroy();
            made = null;
        }
    }
}
