import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

Page {
    padding: 8

    ColumnLayout {
        Label {
            text: "Settings"
        }
        ComboBox {
            id: language
            objectName: "language"
            model: ["English", "Deutsch", "Français"]
        }
        CheckBox {
            text: "Check for updates"
            Accessible.description: "Once a day"
        }
        Slider {
            objectName: "volume"
            to: 100
            value: 40
        }
        Rectangle {
            implicitWidth: 120
            implicitHeight: 30
            color: area.pressed ? "gray" : "silver"

            Text {
                anchors.centerIn: parent
                text: "Reset"
            }
            MouseArea {
                id: area
                anchors.fill: parent
                onClicked: language.currentIndex = 0
            }
        }
    }
}
