// Which UIKit class a widget appears as. GUI thread.
#pragma once

#include <QtCore/qglobal.h>

#include <cstdint>

#include "platform/ObjectiveC/Class.h"

QT_BEGIN_NAMESPACE
class QWidget;
struct QMetaObject;
QT_END_NAMESPACE

namespace tarni::qt {

enum class Kind : std::uint8_t {
  View,
  Window,
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
  HeaderView,
  Picker,
  NavigationBar,
  MenuBar,
  Menu,
  TabBar,
  Slider,
  ProgressView,
  WebView,
  WebDocument,  // what draws the page in a web view
};

// The kind by the classes of the widget and of its parent: no window and no contents are looked at.
Kind kindOfWidget(const QWidget& widget);

// The runtime class of objects with that meta object: the kind's UIKit class for the toolkit's own
// classes; for a class that the application (or a library of its) defines, a class of its own name
// below the kind's.
platform::Class classFor(const QMetaObject* metaObject, Kind kind);

// True for the toolkit's own classes, those of C++: a library of the toolkit holds them, or the
// plug-in of one of its QML modules.
bool isToolkitClass(const QMetaObject* metaObject);

// A class of that name below `superclass`, even when the name is already taken by one below another
// (a page class that stands in a window here and is a window of its own there).
platform::Class classNamed(const char* name, platform::Class superclass);

// Classes that UIKit names, or keeps to itself, and that the agent does not test for.
namespace names {
inline const char* const kActionButton = "UIActionButton";
inline const char* const kTabBarButton = "UITabBarButton";
inline const char* const kHeaderView = "UITableViewHeaderFooterView";
inline const char* const kWebDocument = "UIWebDocumentView";
inline const char* const kHeaderButton = "UITableViewHeaderButton";
inline const char* const kDisclosureButton = "UITableViewDisclosureButton";
}  // namespace names

}  // namespace tarni::qt
