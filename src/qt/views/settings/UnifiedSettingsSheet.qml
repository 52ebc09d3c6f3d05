import QtQuick
import QtQuick.Templates as T
import QtQuick.Layouts
import Corvane

// Every preference, import and export, and help, in sections.
Sheet {
    id: popup

    required property SettingsModel settings
    // An alert or another program may have changed what is to be seen here.
    readonly property bool isLookedAt: visible && parent.Window.active

    onAboutToShow: settings.lookAtDesktop()
    onIsLookedAtChanged: {
        if (isLookedAt)
            settings.lookAtDesktop();
    }
    Connections {
        // Not every desktop makes the window active that a person looks at.
        function onAlertHasGone() {
            if (popup.visible)
                popup.settings.lookAtDesktop();
        }

        target: popup.settings
    }

    wantedWidth: 520
    wantedHeight: 750
    padding: 0

    contentItem: ColumnLayout {
        spacing: 0
        Accessible.role: Accessible.Dialog
        Accessible.name: "Settings"

        ColumnLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: Theme.sheetPadding
            Layout.bottomMargin: Theme.spacingL
            spacing: Theme.spacingXS

            SymbolText {
                Layout.alignment: Qt.AlignHCenter
                symbol: "gearshape.fill"
                size: 32
                color: Theme.accent
            }
            BodyText {
                Layout.alignment: Qt.AlignHCenter
                text: "Settings"
                font.pixelSize: Theme.titleSize
                font.weight: Font.DemiBold
            }
            BodyText {
                Layout.alignment: Qt.AlignHCenter
                text: "Configure Corvane Workspace Manager"
                color: Theme.secondaryLabel
            }
        }
        HairLine {
            Layout.fillWidth: true
        }
        Flickable {
            id: scroll

            readonly property Item focused: Window.activeFocusItem

            // So that the whole of what the keyboard reaches is seen, its focus ring included.
            function reveal(control: Item) {
                const place = sections.mapFromItem(control, 0, 0).y + sections.y;
                const bottom = place + control.height + 12 - height;
                contentY = Math.max(0, Math.min(place - 12, Math.max(bottom, contentY)));
            }
            function holds(control: Item): bool {
                for (let item = control; item; item = item.parent) {
                    if (item === sections)
                        return true;
                }
                return false;
            }

            onFocusedChanged: {
                if (holds(focused))
                    reveal(focused);
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
            contentHeight: sections.implicitHeight + 2 * Theme.looseSpacing
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ThemedScrollBar {}

            SettingsSections {
                id: sections

                x: 20
                y: 16
                width: scroll.width - 2 * Theme.sheetPadding
                settings: popup.settings
            }
        }
        HairLine {
            Layout.fillWidth: true
        }
        ActionButton {
            Layout.alignment: Qt.AlignRight
            Layout.margins: Theme.spacingL
            implicitWidth: 88
            isProminent: true
            text: "Done"
            onClicked: popup.close()
        }
    }
}
