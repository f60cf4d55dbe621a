import QtQuick 2.15
import QtQuick.Controls 2.15

MenuBar {
    Menu {
        title: "File"
        onOpened: window.tell("fileMenu", "open")
        onClosed: window.tell("fileMenu", "closed")

        MenuItem {
            text: "New"
            onTriggered: window.tell("menu", text)
        }
        Menu {
            title: "Sub"

            MenuItem {
                text: "Deep"
                onTriggered: window.tell("menu", text)
            }
            Menu {
                title: "Further"

                MenuItem {
                    text: "Deeper"
                    onTriggered: window.tell("menu", text)
                }
            }
        }
        MenuSeparator {}
        MenuItem {
            text: "Quit"
            onTriggered: Qt.quit()
        }
    }
    Menu {
        title: "View"

        MenuItem {
            text: "Grid"
            checkable: true
            onToggled: window.tell("grid", checked ? "on" : "off")
        }
    }
    Menu {
        title: "Help"

        MenuItem {
            text: "About"
            onTriggered: window.tell("menu", text)
        }
    }
}
