// Which UIKit class an item appears as. GUI thread.
#pragma once

#include <QtQuick/QQuickItem>

#include "platform/ObjectiveC/Class.h"

namespace tarni::qt {

enum class QuickKind : std::uint8_t {
  View,
  Control,
  Label,
  ImageView,
  Button,
  Switch,
  TextField,
  TextView,
  ScrollView,
  TableView,
  CollectionView,
  TableCell,
  CollectionCell,
  Picker,
  NavigationBar,
  TabBar,
  Slider,
  ProgressView,
  Alert,
  WebView,
  WebDocument,  // what draws the page in a web view
  Disclosure,   // what opens a node of a tree
};

// By the first of the item's C++ classes that is known; a delegate is a cell. A popup counts by the
// popup object, not by the item that shows it.
QuickKind kindOfItem(const QQuickItem& item);

// The kind's UIKit class for the toolkit's own types. A type that the application defines, in C++
// or in a QML file, is a class of its own name below it; what the QML engine appends to such names
// differs from run to run and is left out.
platform::Class classOfItem(const QQuickItem& item, QuickKind kind);
platform::Class classOfWindow(const QQuickWindow& window);

// The list, table or tree that the item is a delegate of, or null.
const QQuickItem* listOfCell(const QQuickItem& item);

// The popup that the item shows, or null.
const QObject* popupOfItem(const QQuickItem& item);

// True for an item that stands in a control of the toolkit and does a thing of its own there: the
// arrows of a spin box, the arrow of a combo box with a text field, the handle of a slider, the
// arrow of a tree's node; and for what dims the page behind a modal popup.
bool isControlPart(const QQuickItem& item);

// What such a part is called; null for a tree's node, which is called like its row, and for any
// other item.
const char* titleOfControlPart(const QQuickItem& item);

// True for a row of a tree: it leaves the mouse to the tree but keeps touches for itself, although
// it does nothing with them.
bool isTreeRow(const QQuickItem& item);

// The item of the modal popup that is closed by a press on `item`, which dims the page behind it.
// Null for any other item.
const QQuickItem* popupDismissedBy(const QQuickItem& item);

// True for kinds that are drawn by parts which nobody takes for things of their own (a button's
// background and its text).
bool drawsItself(QuickKind kind);

}  // namespace tarni::qt
