import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

GroupBox {
    title: "Collections"

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        SplitView {
            Layout.fillWidth: true
            Layout.fillHeight: true

            ListView {
                id: list
                objectName: "list"
                SplitView.preferredWidth: 150
                clip: true
                currentIndex: -1
                model: 30
                ScrollBar.vertical: ScrollBar {}
                delegate: ItemDelegate {
                    width: ListView.view.width
                    text: "Row " + (index + 1)
                    highlighted: ListView.isCurrentItem
                    onClicked: {
                        list.currentIndex = index;
                        window.tell("list", text);
                    }
                }

                Menu {
                    id: context

                    MenuItem {
                        text: "Rename"
                        onTriggered: window.tell("context", text)
                    }
                    MenuItem {
                        text: "Remove"
                        onTriggered: window.tell("context", text)
                    }
                }
                TapHandler {
                    acceptedButtons: Qt.RightButton
                    onTapped: context.popup()
                }
            }
            Loader {
                active: hasTree
                source: "Tree.qml"
            }
        }
        TableView {
            objectName: "table"
            Layout.fillWidth: true
            Layout.preferredHeight: 130
            clip: true
            model: tableModel
            delegate: TextField {
                implicitWidth: 110
                implicitHeight: 40
                text: display
                onEditingFinished: {
                    if (text !== display) {
                        display = text;
                        window.tell(String.fromCharCode(65 + column) + (row + 1), text);
                    }
                }
            }
        }
        Row {
            spacing: 40

            Rectangle {
                objectName: "square"
                width: 60
                height: 60
                color: "darkcyan"

                TapHandler {
                    onTapped: window.tell("scene", "Square")
                }
            }
            Rectangle {
                objectName: "circle"
                width: 60
                height: 60
                radius: 30
                color: "olive"

                MouseArea {
                    anchors.fill: parent
                    onClicked: window.tell("scene", "Circle")
                }
            }
        }
    }
}
