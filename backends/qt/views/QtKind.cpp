#include "backends/qt/views/QtKind.h"

#include <dlfcn.h>

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolBar>
#include <array>
#include <cstring>
#include <map>
#include <vector>

#include "platform/Foundation/Lowercase.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {
namespace {

using platform::Class;
namespace uikit = platform::uikit;

struct Row {
  const QMetaObject* metaObject;
  Kind kind;
};

// The nearest superclass in the table decides, so its order does not matter.
const std::array kKinds{
    Row{&QAbstractButton::staticMetaObject, Kind::Button},
    Row{&QCheckBox::staticMetaObject, Kind::Switch},
    Row{&QLineEdit::staticMetaObject, Kind::TextField},
    Row{&QTextEdit::staticMetaObject, Kind::TextView},
    Row{&QPlainTextEdit::staticMetaObject, Kind::TextView},
    Row{&QLabel::staticMetaObject, Kind::Label},
    Row{&QAbstractScrollArea::staticMetaObject, Kind::ScrollView},
    Row{&QAbstractItemView::staticMetaObject, Kind::TableView},
    Row{&QHeaderView::staticMetaObject, Kind::HeaderView},
    Row{&QComboBox::staticMetaObject, Kind::Picker},
    Row{&QToolBar::staticMetaObject, Kind::NavigationBar},
    Row{&QMenuBar::staticMetaObject, Kind::MenuBar},
    Row{&QMenu::staticMetaObject, Kind::Menu},
    Row{&QTabBar::staticMetaObject, Kind::TabBar},
    Row{&QAbstractSlider::staticMetaObject, Kind::Slider},
    Row{&QScrollBar::staticMetaObject, Kind::Control},
    Row{&QProgressBar::staticMetaObject, Kind::ProgressView},
    Row{&QAbstractSpinBox::staticMetaObject, Kind::Control},
};

Class uikitClass(Kind kind) {
  switch (kind) {
    case Kind::View:
    case Kind::Menu:
      return uikit::UIView;
    case Kind::Window:
      return uikit::UIWindow;
    case Kind::Control:
      return uikit::UIControl;
    case Kind::Label:
      return uikit::UILabel;
    case Kind::ImageView:
      return uikit::UIImageView;
    case Kind::Button:
      return uikit::UIButton;
    case Kind::Switch:
      return uikit::UISwitch;
    case Kind::TextField:
      return uikit::UITextField;
    case Kind::TextView:
      return uikit::UITextView;
    case Kind::ScrollView:
      return uikit::UIScrollView;
    case Kind::TableView:
      return uikit::UITableView;
    case Kind::CollectionView:
      return uikit::UICollectionView;
    case Kind::HeaderView:
      return platform::defineClass(names::kHeaderView, uikit::UIView);
    case Kind::Picker:
      return uikit::UIPickerView;
    case Kind::NavigationBar:
    case Kind::MenuBar:
      return uikit::UINavigationBar;
    case Kind::TabBar:
      return uikit::UITabBar;
    case Kind::Slider:
      return uikit::UISlider;
    case Kind::ProgressView:
      return uikit::UIProgressView;
    case Kind::WebView:
      return uikit::UIWebView;
    case Kind::WebDocument:
      return platform::defineClass(names::kWebDocument, uikit::UIView);
  }
  return uikit::UIView;
}

// By its name: the engine's library is not linked here.
bool isWebView(const QMetaObject* metaObject) {
  return std::strcmp(metaObject->className(), "QWebEngineView") == 0;
}

bool isDocumentOfWebView(const QWidget& widget) {
  const QWidget* const parent = widget.parentWidget();
  if (!parent || parent->focusProxy() != &widget) return false;
  for (const QMetaObject* at = parent->metaObject(); at; at = at->superClass()) {
    if (isWebView(at)) return true;
  }
  return false;
}

Class makeClass(const QMetaObject* metaObject, Kind kind) {
  // Web views are told by exactly that name, and programs hardly use one without deriving from it.
  if (kind == Kind::WebView || kind == Kind::WebDocument) return uikitClass(kind);
  std::vector<const QMetaObject*> own;
  for (const QMetaObject* at = metaObject; at && !isToolkitClass(at); at = at->superClass()) {
    own.push_back(at);
  }
  Class made = uikitClass(kind);
  if (own.empty()) return made;
  // The superclasses of the application itself are classes too, and the same ones for all.
  const Class above = own.size() > 1 ? classFor(own[1], kind) : made;
  return classNamed(own.front()->className(), above);
}

}  // namespace

// The name of a class does not tell: the toolkit has a "CloseButton", and an application may have a
// "QuickPanel".
bool isToolkitClass(const QMetaObject* metaObject) {
  Dl_info where{};
  if (dladdr(metaObject, &where) == 0 || !where.dli_fname) return false;
  const std::string_view path = where.dli_fname;
  const bool isOfModule = path.find("/qml/Qt") != path.npos;
  return isOfModule ||
         path.substr(path.rfind('/') + 1).starts_with("libQt" QT_STRINGIFY(QT_VERSION_MAJOR));
}

Class classNamed(const char* name, Class superclass) {
  const Class named = platform::defineClass(name, superclass);
  if (named->superclass() == superclass) return named;
  return new platform::ClassInfo(std::string(name), superclass);
}

Kind kindOfWidget(const QWidget& widget) {
  if (isDocumentOfWebView(widget)) return Kind::WebDocument;
  const QMetaObject* at = widget.metaObject();
  const char* const name = at->className();
  for (; at; at = at->superClass()) {
    if (isWebView(at)) return Kind::WebView;
    for (const auto& [metaObject, kind] : kKinds) {
      if (metaObject != at) continue;
      // A button that an application draws as a switch and calls one is toggled like one.
      const bool isOwnSwitch = kind == Kind::Button &&
                               static_cast<const QAbstractButton&>(widget).isCheckable() &&
                               platform::lowercase(name).find("switch") != std::string::npos;
      return isOwnSwitch ? Kind::Switch : kind;
    }
  }
  return Kind::View;
}

Class classFor(const QMetaObject* metaObject, Kind kind) {
  static auto* const known = new std::map<std::pair<const QMetaObject*, Kind>, Class>;
  const std::pair key{metaObject, kind};
  const auto found = known->find(key);
  if (found != known->end()) return found->second;
  const Class made = makeClass(metaObject, kind);
  return known->emplace(key, made).first->second;
}

}  // namespace tarni::qt
