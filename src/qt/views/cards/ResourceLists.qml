import QtQml
import Corvane

// The inside of cards that are expanded, or were lately.
KeptViews {
    visible: false
    file: Qt.resolvedUrl("../resources/ResourceManagementView.qml")
}
