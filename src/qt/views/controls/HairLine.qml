import QtQuick
import Corvane

Rectangle {
    width: parent ? parent.width : 0
    height: 1
    color: Theme.separator
}
