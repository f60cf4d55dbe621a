import QtQuick 2.15
import QtQuick.Controls 2.15

Dialog {
    anchors.centerIn: Overlay.overlay
    modal: true
    title: "Details"

    Label {
        text: "Really?"
    }

    // Not the desktop's words for them, which differ.
    footer: DialogButtonBox {
        Button {
            text: "OK"
            DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole
        }
        Button {
            text: "Cancel"
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
        }
    }
}
