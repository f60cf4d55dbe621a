import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

GroupBox {
    title: "Fields"

    GridLayout {
        anchors.fill: parent
        columns: 2

        Label {
            text: "Line"
        }
        TextField {
            objectName: "line"
            Layout.fillWidth: true
            onTextChanged: window.tell(objectName, text)
        }
        Label {
            text: "Next line"
        }
        TextField {
            objectName: "nextLine"
            Layout.fillWidth: true
            onTextChanged: window.tell(objectName, text)
        }
        Label {
            text: "Notes"
        }
        ScrollView {
            Layout.fillWidth: true
            Layout.fillHeight: true

            TextArea {
                objectName: "notes"
                onTextChanged: window.tell(objectName, text)
                background: Rectangle {
                    border.color: "silver"
                }
            }
        }
        Label {
            text: "Colour"
        }
        ComboBox {
            objectName: "colour"
            Layout.fillWidth: true
            model: ["Red", "Green", "Blue", "Violet"]
            onActivated: window.tell(objectName, currentText)
        }
        Label {
            text: "Size"
        }
        ComboBox {
            objectName: "size"
            Layout.fillWidth: true
            editable: true
            model: ["Small", "Medium", "Large"]
            onEditTextChanged: window.tell(objectName, editText)
        }
        Label {
            text: "Count"
        }
        SpinBox {
            objectName: "count"
            Layout.fillWidth: true
            editable: true
            onValueChanged: window.tell(objectName, value)
        }
        Label {
            text: "Volume"
        }
        Slider {
            objectName: "volume"
            Layout.fillWidth: true
            to: 100
            stepSize: 1
            onValueChanged: window.tell(objectName, value)
        }
        Label {
            text: "Fixed"
        }
        TextField {
            Layout.fillWidth: true
            text: "as it is"
            readOnly: true
        }
        Label {
            text: "Off"
        }
        TextField {
            Layout.fillWidth: true
            text: "off"
            enabled: false
        }
    }
}
