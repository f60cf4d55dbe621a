import QtQuick
import QtQuick.Controls

TreeView {
    objectName: "tree"
    clip: true
    model: treeModel
    selectionModel: ItemSelectionModel {
        model: treeModel
        onCurrentChanged: current => window.tell("tree", model.data(current))
    }
    delegate: TreeViewDelegate {
        id: node
        onExpandedChanged: window.tell(model.display, expanded ? "open" : "closed")
    }
}
