import QtQuick
import QtQuick.Layouts
import Corvane

// One workspace: what it is called, whether it runs, and how to start it.
Rectangle {
    id: card

    required property int index
    required property string name
    required property string description
    required property string icon
    required property int gradient
    required property bool isRunning
    required property bool isLoading
    required property string startTitle
    required property string statusText

    signal started

    implicitHeight: row.implicitHeight + 2 * 18
    radius: Theme.radius
    color: Theme.controlBackground
    border.width: 1
    border.color: Theme.separator
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    RowLayout {
        id: row

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            margins: 18
        }
        spacing: 12

        GradientTile {
            implicitWidth: 36
            implicitHeight: 36
            symbol: card.icon
            gradientIndex: card.gradient
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            BodyText {
                Layout.fillWidth: true
                text: card.name
                elide: Text.ElideRight
                maximumLineCount: 1
                font.pixelSize: Theme.cardTitleSize
                font.weight: Font.DemiBold
            }
            BodyText {
                Layout.fillWidth: true
                visible: card.description !== ""
                text: card.description
                elide: Text.ElideRight
                maximumLineCount: 1
                font.pixelSize: Theme.captionSize
                color: Theme.secondaryLabel
            }
        }
        RunningPill {
            visible: card.isRunning
        }
        BodyText {
            visible: card.isRunning
            text: card.statusText
            color: Theme.secondaryLabel
        }
        ActionButton {
            visible: !card.isRunning
            enabled: !card.isLoading
            implicitWidth: 120
            isBusy: card.isLoading
            symbol: "play.fill"
            text: card.startTitle
            Accessible.description: card.name
            onClicked: card.started()
        }
    }
}
