import QtQuick
import Corvane

// One step of the tour: a picture, what it says, and perhaps something to try.
Item {
    id: view

    required property OnboardingModel tour
    readonly property bool showsApplication: tour.icon === "app.icon"
    readonly property int shownStep: tour.currentStep

    onShownStepChanged: {
        appear.restart();
        announcement.say([tour.title, tour.subtitle, tour.description].join(". "));
    }

    Announcement {
        id: announcement
    }

    Column {
        id: content

        anchors.centerIn: parent
        width: parent.width - 2 * 40
        spacing: 30

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 80
            height: 80

            Drawing {
                anchors.fill: parent
                visible: view.showsApplication && source !== ""
                source: view.tour.applicationPicture
            }
            GradientTile {
                anchors.fill: parent
                visible: view.showsApplication && view.tour.applicationPicture === ""
                radius: Theme.largeRadius
                symbol: "bolt.fill"
                symbolSize: 40
            }
            SymbolText {
                anchors.centerIn: parent
                visible: !view.showsApplication
                symbol: view.tour.icon
                size: 80
                color: Theme.accent
            }
        }
        Column {
            width: parent.width
            spacing: Theme.looseSpacing

            BodyText {
                width: parent.width
                text: view.tour.title
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: 26
                font.weight: Font.Bold
            }
            BodyText {
                width: parent.width
                text: view.tour.subtitle
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: Theme.titleSize
                color: Theme.secondaryLabel
            }
            BodyText {
                width: parent.width
                text: view.tour.description
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                lineHeight: 1.2
            }
        }
        ActionButton {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: view.tour.actionTitle !== ""
            text: view.tour.actionTitle
            onClicked: view.tour.pressAction()
        }
    }

    NumberAnimation {
        id: appear

        target: content
        property: "opacity"
        from: 0
        to: 1
        duration: 300
        easing.type: Easing.InOutQuad
    }
}
