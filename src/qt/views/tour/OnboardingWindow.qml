import QtQuick
import QtQuick.Layouts
import Corvane

// The tour through the program.
Window {
    id: window

    required property OnboardingModel tour

    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    width: 600
    height: 500
    minimumWidth: 600
    maximumWidth: 600
    minimumHeight: 500
    maximumHeight: 500
    color: Theme.windowBackground

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.sheetPadding
        spacing: 0

        ActionButton {
            Layout.alignment: Qt.AlignHCenter
            isPlain: true
            foreground: Theme.secondaryLabel
            text: "Skip"
            onClicked: window.tour.skip()
        }
        Row {
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: Theme.spacingL
            spacing: Theme.spacingM

            Repeater {
                model: window.tour.stepCount

                Item {
                    id: dot

                    required property int index
                    readonly property bool isCurrent: index === window.tour.currentStep

                    width: 10
                    height: 10

                    // A scale would leave its edge ragged.
                    Rectangle {
                        anchors.centerIn: parent
                        width: dot.isCurrent ? 12 : 10
                        height: width
                        radius: width / 2
                        color: dot.isCurrent ? Theme.accent : Theme.faded(Theme.secondaryLabel, 0.3)

                        Behavior on width {
                            NumberAnimation {
                                duration: 200
                                easing.type: Easing.InOutQuad
                            }
                        }
                    }
                }
            }
        }
        OnboardingStepView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            tour: window.tour
        }
        RowLayout {
            Layout.fillWidth: true

            ActionButton {
                implicitWidth: Math.max(100, contentWidth)
                text: "Previous"
                enabled: !window.tour.isFirst
                onClicked: window.tour.previous()
            }
            Item {
                Layout.fillWidth: true
            }
            BodyText {
                text: window.tour.caption
                font.pixelSize: Theme.captionSize
                color: Theme.secondaryLabel
            }
            Item {
                Layout.fillWidth: true
            }
            ActionButton {
                implicitWidth: Math.max(100, contentWidth)
                isProminent: true
                text: window.tour.mainButtonTitle
                onClicked: window.tour.pressMainButton()
            }
        }
    }
}
