import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

ApplicationWindow {
    id: window
    width: 1000
    height: 640
    visible: true
    title: "Tarni Quick Controls"

    function tell(control, state) {
        var line = control + "=" + String(state).replace(/\n/g, "\\n");
        console.info(line);
        status.text = line;
    }

    menuBar: Menus {}
    header: ToolBar {
        Row {
            ToolButton {
                text: "Refresh"
                onClicked: window.tell("tool", text)
            }
            ToolButton {
                id: style
                objectName: "style"
                text: "Style"
                onClicked: styles.open()

                Menu {
                    id: styles
                    y: style.height

                    MenuItem {
                        text: "Plain"
                        onTriggered: window.tell("style", text)
                    }
                    MenuItem {
                        text: "Bold"
                        onTriggered: window.tell("style", text)
                    }
                }
            }
        }
    }
    footer: Label {
        id: status
        objectName: "status"
        padding: 6
    }

    RowLayout {
        anchors.fill: parent
        anchors.margins: 8
        spacing: 8

        Fields {
            Layout.preferredWidth: 320
            Layout.fillHeight: true
        }
        Choices {
            Layout.preferredWidth: 270
            Layout.fillHeight: true
        }
        Collections {
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
