import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtWebEngine 1.10

ApplicationWindow {
    width: 760
    height: 620
    visible: true
    title: "Tarni Web Sample"

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 8

        TextField {
            id: number
            Layout.fillWidth: true
            placeholderText: "Order number"
        }
        WebEngineView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            url: startPage
        }
        RowLayout {
            Label {
                id: status
                Layout.fillWidth: true
                text: "Open"
            }
            Button {
                text: "Close order"
                onClicked: status.text = "Closed: " + number.text
            }
        }
    }
}
