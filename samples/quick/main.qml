import QtQuick 2.15
import QtQuick.Controls 2.15

ApplicationWindow {
    width: 420
    height: 440
    visible: true
    title: "Tarni Quick Sample"

    header: ToolBar {
        Row {
            ToolButton {
                objectName: "back"
                text: "Back"
                enabled: pages.depth > 1
                onClicked: pages.pop()
            }
            ToolButton {
                text: "Settings"
                enabled: pages.depth === 1
                onClicked: pages.push("SettingsPage.qml")
            }
        }
    }

    StackView {
        id: pages
        anchors.fill: parent
        initialItem: LoginPage {}
    }
}
