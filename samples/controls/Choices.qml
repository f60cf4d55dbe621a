import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15

GroupBox {
    title: "Choices"

    ColumnLayout {
        anchors.fill: parent

        CheckBox {
            objectName: "check"
            text: "Check"
            onToggled: window.tell(objectName, checked ? "on" : "off")
        }
        Switch {
            objectName: "switch"
            text: "Switch"
            onToggled: window.tell(objectName, checked ? "on" : "off")
        }
        RowLayout {
            Repeater {
                model: ["Walk", "Ride", "Drive"]

                RadioButton {
                    objectName: modelData
                    text: modelData
                    onToggled: window.tell("travel", text)
                }
            }
        }
        Button {
            property int presses: 0
            objectName: "press"
            Layout.fillWidth: true
            text: "Press"
            onClicked: window.tell(objectName, ++presses)
        }
        Button {
            objectName: "toggle"
            Layout.fillWidth: true
            text: "Toggle"
            checkable: true
            onToggled: window.tell(objectName, checked ? "on" : "off")
        }
        Button {
            Layout.fillWidth: true
            text: "Message…"
            onClicked: message.open()
        }
        Button {
            Layout.fillWidth: true
            text: "Search…"
            onClicked: search.open()
        }
        Button {
            Layout.fillWidth: true
            text: "Window…"
            onClicked: second.show()
        }
        TabBar {
            id: tabs
            Layout.fillWidth: true
            onCurrentIndexChanged: window.tell("tabs", currentItem.text)

            TabButton {
                text: "One"
            }
            TabButton {
                text: "Two"
            }
            TabButton {
                text: "Three"
            }
        }
        // Each page has a button that stands where those of the other pages do.
        StackLayout {
            currentIndex: tabs.currentIndex

            Repeater {
                model: ["One", "Two", "Three"]

                ColumnLayout {
                    Label {
                        text: "Page " + modelData
                    }
                    Button {
                        text: "On page"
                        onClicked: window.tell("page", modelData)
                    }
                }
            }
        }
    }

    Dialog {
        id: message
        parent: Overlay.overlay
        anchors.centerIn: parent
        modal: true
        title: "Question"
        standardButtons: Dialog.Yes | Dialog.No
        onAccepted: window.tell("message", "Yes")
        onRejected: window.tell("message", "No")

        Label {
            text: "Really?"
        }
    }

    // Stands above the page, which goes on.
    Dialog {
        id: search
        parent: Overlay.overlay
        x: 12
        y: 290
        modal: false
        closePolicy: Popup.NoAutoClose
        title: "Search"
        onOpened: window.tell("searchDialog", "open")
        onClosed: window.tell("searchDialog", "closed")

        RowLayout {
            TextField {
                id: words
                objectName: "words"
                Layout.preferredWidth: 90
            }
            Button {
                text: "Next"
                onClicked: window.tell("search", words.text)
            }
            Button {
                text: "Done"
                onClicked: search.close()
            }
        }
    }

    Window {
        id: second
        x: window.x + 20
        y: window.y + window.height + 60
        width: 240
        height: 60
        title: "Second Window"
        onVisibleChanged: window.tell("secondWindow", visible ? "open" : "closed")

        Row {
            anchors.centerIn: parent
            spacing: 8

            Button {
                property int presses: 0
                objectName: "again"
                text: "Press here"
                onClicked: window.tell(objectName, ++presses)
            }
            Button {
                text: "Close"
                onClicked: second.close()
            }
        }
    }
}
