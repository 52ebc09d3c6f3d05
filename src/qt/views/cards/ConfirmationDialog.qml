import QtQuick
import Corvane

// A question with a destructive answer and a way out.
Sheet {
    id: dialog

    required property string title
    required property string message
    required property string confirmTitle
    required property bool isWanted

    signal confirmed
    signal cancelled

    wantedWidth: 380
    onIsWantedChanged: isWanted ? open() : close()
    // By the Escape key, while it is still wanted.
    onClosed: {
        if (isWanted)
            cancelled();
    }

    contentItem: Column {
        spacing: Theme.spacingL
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title

        BodyText {
            width: parent.width
            text: dialog.title
            font.pixelSize: 15
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
        }
        BodyText {
            // The text stays while the dialog goes.
            property string last: ""

            width: parent.width
            text: dialog.message !== "" ? dialog.message : last
            onTextChanged: last = this.text
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            bottomPadding: Theme.spacingS
        }
        ActionButton {
            width: parent.width
            focus: true
            text: dialog.confirmTitle
            isProminent: true
            tint: Theme.redFill
            onClicked: dialog.confirmed()
        }
        ActionButton {
            width: parent.width
            text: "Cancel"
            onClicked: dialog.cancelled()
        }
    }
}
