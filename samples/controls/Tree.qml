import QtQuick
import QtQuick.Controls

TreeView {
    id: tree
    objectName: "tree"
    clip: true
    model: treeModel
    selectionModel: ItemSelectionModel {
        model: treeModel
        onCurrentChanged: current => window.tell("tree", model.data(current))
    }
    delegate: TreeViewDelegate {}
    onExpanded: row => window.tell(textOf(row), "open")
    onCollapsed: row => window.tell(textOf(row), "closed")

    function textOf(row) {
        return model.data(modelIndex(Qt.point(0, row)));
    }
}
