import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

Page {
    id: page
    padding: 8

    ColumnLayout {
        anchors.fill: parent

        Label {
            id: welcome
            text: "Welcome"
        }
        TextField {
            id: username
            objectName: "username"
            Layout.fillWidth: true
            placeholderText: "User name"
        }
        TextField {
            objectName: "password"
            Layout.fillWidth: true
            placeholderText: "Password"
            echoMode: TextInput.Password
        }
        Switch {
            objectName: "remember"
            text: "Remember me"
        }
        ListView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: 20
            delegate: ItemDelegate {
                width: ListView.view.width
                text: "Row " + (index + 1)
                onClicked: answer.text = text
            }
        }
        Button {
            objectName: "login"
            Layout.fillWidth: true
            text: "&Log in"
            onClicked: welcome.text = "Hello, " + username.text
        }
        Button {
            objectName: "details"
            Layout.fillWidth: true
            text: "&Details…"
            onClicked: question.open()
        }
        Label {
            id: answer
        }
    }

    Question {
        id: question
        onAccepted: answer.text = "Accepted"
        onRejected: answer.text = "Rejected"
    }
}
