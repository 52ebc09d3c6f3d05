import QtQuick
import QtQuick.Layouts
import Corvane

// A resource that can be launched: its name, its applications and its switches.
Item {
    id: content

    required property ResourceRowData row
    readonly property Item handle: grip

    implicitHeight: Math.max(44, layout.implicitHeight + 2 * Theme.spacingS) + 2 * row.inset

    Rectangle {
        anchors.fill: parent
        anchors.margins: content.row.inset
        radius: Theme.mediumRadius
        color: Theme.faded(Theme.controlBackground, content.row.isEnabled ? 1 : 0.5)
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: menuButton.open()
    }
    RowLayout {
        id: layout

        x: Theme.spacingXL
        width: parent.width - 2 * x
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacingL
        opacity: content.row.isEnabled ? 1 : 0.6

        DragHandle {
            id: grip

            row: content.row
        }
        ResourceIcon {
            Layout.preferredWidth: 20
            symbol: content.row.symbol
            iconSource: content.row.iconSource
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.spacingXS

            RowLayout {
                id: heading

                Layout.fillWidth: true
                spacing: Theme.spacingM

                HoverHandler {
                    id: pointer
                }
                OnDemand {
                    parent: heading
                    wanted: pointer.hovered && content.row.opens !== ""

                    ThemedToolTip {
                        text: content.row.opens
                        visible: true
                    }
                }
                BodyText {
                    Layout.fillWidth: true
                    Layout.maximumWidth: Math.ceil(implicitWidth)
                    text: content.row.name
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    font.pixelSize: 14
                    font.weight: Font.Medium
                }
                Loader {
                    active: content.row.isMissing
                    visible: active

                    sourceComponent: MissingMark {
                        path: content.row.path
                    }
                }
                Rectangle {
                    implicitWidth: badge.implicitWidth + 2 * Theme.spacingS
                    implicitHeight: badge.implicitHeight + 2 * Theme.spacingXXS
                    radius: Theme.tinyRadius
                    color: Theme.faded(Theme.secondaryLabel, 0.15)

                    BodyText {
                        id: badge

                        anchors.centerIn: parent
                        text: content.row.type.toUpperCase()
                        font.pixelSize: 10
                        font.weight: Font.Medium
                        color: Theme.secondaryLabel
                    }
                }
                Item {
                    Layout.fillWidth: true
                }
            }
            Flow {
                Layout.fillWidth: true
                visible: content.row.type !== "application"
                spacing: Theme.spacingS

                Repeater {
                    model: content.row.chips

                    AppChip {
                        required property var modelData

                        appName: modelData.appName
                        isDefault: modelData.isDefault
                        iconSource: modelData.iconSource
                        onRemoved: byKey => {
                            if (byKey)
                                addApp.forceActiveFocus(Qt.TabFocusReason);
                            content.row.resources.removeApplication(content.row.key, appName);
                        }
                    }
                }
                AddAppButton {
                    id: addApp

                    onClicked: content.row.resources.chooseApplication(content.row.key)
                }
            }
        }
        ColumnLayout {
            spacing: Theme.spacingXXS

            Loader {
                Layout.alignment: Qt.AlignRight
                Layout.preferredHeight: 20
                active: !content.row.isEnabled

                sourceComponent: Item {
                    implicitWidth: pill.width

                    Rectangle {
                        id: pill

                        width: pillText.implicitWidth + 2 * Theme.spacingM
                        height: 18
                        radius: 9
                        color: Theme.faded(Theme.gray, 0.1)
                        border.width: 1
                        border.color: Theme.faded(Theme.red, 0.3)

                        BodyText {
                            id: pillText

                            anchors.centerIn: parent
                            text: "Disabled : Excluded from being opened/quit"
                            font.pixelSize: 9
                            font.weight: Font.Bold
                            color: Theme.secondaryLabel
                        }
                    }
                }
            }
            RowLayout {
                Layout.alignment: Qt.AlignRight
                spacing: Theme.looseSpacing

                SymbolButton {
                    symbol: content.row.isRunning ? "stop.fill" : "play.fill"
                    tint: content.row.isRunning ? Theme.red : Theme.accent
                    tooltip: content.row.playTooltip
                    onClicked: content.row.resources.pressPlay(content.row.key)
                }
                ThemedSwitch {
                    scale: 0.8
                    tint: Theme.greenFill
                    isOn: content.row.isEnabled
                    tooltip: content.row.enabledTooltip
                    Accessible.name: content.row.enabledTooltip
                    onSwitched: content.row.resources.toggleEnabled(content.row.key)
                }
                TrashButton {
                    row: content.row
                }
                RowMenuButton {
                    id: menuButton

                    row: content.row
                }
            }
        }
    }
}
