#include "backends/qt/quick/QuickKind.h"

#include <private/qquickitem_p.h>

#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <map>
#include <vector>

#include "backends/qt/quick/QmlOrigin.h"
#include "backends/qt/views/QtKind.h"
#include "platform/Foundation/Lowercase.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {
namespace {

using platform::Class;
namespace uikit = platform::uikit;

using KindsByName = std::map<std::string_view, QuickKind>;

// By name, since many of these classes are private to libraries that a program need not have.
const KindsByName& knownKinds() {
  static const auto* const kinds = new KindsByName{
      {"QQuickText", QuickKind::Label},
      {"QQuickAbstractButton", QuickKind::Button},
      {"QQuickSwitch", QuickKind::Switch},
      {"QQuickSwitchDelegate", QuickKind::Switch},
      {"QQuickCheckBox", QuickKind::Switch},
      {"QQuickCheckDelegate", QuickKind::Switch},
      {"QQuickTextInput", QuickKind::TextField},
      {"QQuickTextEdit", QuickKind::TextView},
      {"QQuickImageBase", QuickKind::ImageView},
      {"QQuickFlickable", QuickKind::ScrollView},
      {"QQuickListView", QuickKind::TableView},
      {"QQuickTableView", QuickKind::TableView},
      {"QQuickGridView", QuickKind::CollectionView},
      {"QQuickComboBox", QuickKind::Picker},
      {"QQuickTumbler", QuickKind::Picker},
      {"QQuickToolBar", QuickKind::NavigationBar},
      {"QQuickMenuBar", QuickKind::NavigationBar},
      {"QQuickTabBar", QuickKind::TabBar},
      {"QQuickSlider", QuickKind::Slider},
      {"QQuickRangeSlider", QuickKind::Slider},
      {"QQuickDial", QuickKind::Slider},
      {"QQuickProgressBar", QuickKind::ProgressView},
      {"QQuickSpinBox", QuickKind::Control},
      {"QQuickScrollBar", QuickKind::Control},
      {"QQuickDialog", QuickKind::Alert},
      {"QQuickWebEngineView", QuickKind::WebView},
  };
  return *kinds;
}

Class uikitClass(QuickKind kind) {
  switch (kind) {
    case QuickKind::View:
      return uikit::UIView;
    case QuickKind::Control:
      return uikit::UIControl;
    case QuickKind::Label:
      return uikit::UILabel;
    case QuickKind::ImageView:
      return uikit::UIImageView;
    case QuickKind::Button:
      return uikit::UIButton;
    case QuickKind::Switch:
      return uikit::UISwitch;
    case QuickKind::TextField:
      return uikit::UITextField;
    case QuickKind::TextView:
      return uikit::UITextView;
    case QuickKind::ScrollView:
      return uikit::UIScrollView;
    case QuickKind::TableView:
      return uikit::UITableView;
    case QuickKind::CollectionView:
      return uikit::UICollectionView;
    case QuickKind::TableCell:
      return uikit::UITableViewCell;
    case QuickKind::CollectionCell:
      return uikit::UICollectionViewCell;
    case QuickKind::Picker:
      return uikit::UIPickerView;
    case QuickKind::NavigationBar:
      return uikit::UINavigationBar;
    case QuickKind::TabBar:
      return uikit::UITabBar;
    case QuickKind::Slider:
      return uikit::UISlider;
    case QuickKind::ProgressView:
      return uikit::UIProgressView;
    case QuickKind::Alert:
      return uikit::UIAlertView;
    case QuickKind::WebView:
      return uikit::UIWebView;
    case QuickKind::WebDocument:
      return platform::defineClass(names::kWebDocument, uikit::UIView);
    case QuickKind::Disclosure:
      return platform::defineClass(names::kDisclosureButton, uikit::UIButton);
  }
  return uikit::UIView;
}

bool isMadeByEngine(std::string_view className) {
  return className.find("_QMLTYPE_") != className.npos || className.find("_QML_") != className.npos;
}

std::string_view withoutNumber(std::string_view className) {
  const std::size_t type = className.find("_QMLTYPE_");
  return className.substr(0, type != className.npos ? type : className.find("_QML_"));
}

QuickKind kindOfClass(const QMetaObject* at) {
  for (; at; at = at->superClass()) {
    const auto known = knownKinds().find(at->className());
    if (known != knownKinds().end()) return known->second;
  }
  return QuickKind::View;
}

// The application's own types among the superclasses, the most derived one first. The toolkit
// implements some of its classes in QML files that are called like them ("Button" for
// "QQuickButton"), a style may do so too, and adding a property to an object makes a class that is
// called like the object's own.
std::vector<std::string> ownNames(const QMetaObject* metaObject) {
  std::vector<std::string> names;
  const QMetaObject* native = metaObject;
  for (; native && !isToolkitClass(native); native = native->superClass()) {
    const std::string name(withoutNumber(native->className()));
    if (names.empty() || names.back() != name) names.push_back(name);
  }
  for (; native; native = native->superClass()) {
    const std::string_view toolkits = native->className();
    std::erase_if(names, [&](const std::string& name) {
      return name == toolkits || (toolkits.starts_with("QQuick") && toolkits.substr(6) == name);
    });
  }
  return names;
}

Class makeClass(const QMetaObject* metaObject, Class kindsClass) {
  std::vector<std::string> names = ownNames(metaObject);
  Class made = kindsClass;
  for (; !names.empty(); names.pop_back()) made = classNamed(names.back().c_str(), made);
  return made;
}

// Classes of QML types come and go with their engines, and another may stand at the same address
// then: only those of C++ are kept.
Class classFor(const QMetaObject* metaObject, Class kindsClass) {
  if (isMadeByEngine(metaObject->className())) return makeClass(metaObject, kindsClass);
  static auto* const known = new std::map<std::pair<const QMetaObject*, Class>, Class>;
  const auto [place, isNew] = known->try_emplace({metaObject, kindsClass}, nullptr);
  if (isNew) place->second = makeClass(metaObject, kindsClass);
  return place->second;
}

// A list of items that the program made one by one (the tabs of a tab bar) has no cells.
bool showsItemsOfItsOwn(const QQuickItem& list) {
  const auto* const model = list.property("model").value<QObject*>();
  return model && model->inherits("QQmlObjectModel");
}

// The list that the item is a delegate of, or null.
const QQuickItem* listOfDelegate(const QQuickItem& item, const char* attachedClass) {
  const QObject* const attached = attachedObject(item, attachedClass);
  return attached ? qobject_cast<QQuickItem*>(attached->property("view").value<QObject*>())
                  : nullptr;
}

// What the application calls a switch is toggled like one, provided that it can be.
bool isOwnSwitch(const QQuickItem& item, QuickKind own) {
  const std::string_view name = withoutNumber(item.metaObject()->className());
  if (platform::lowercase(name).find("switch") == std::string::npos) return false;
  if (own == QuickKind::Button) return item.property("checkable").toBool();
  return own == QuickKind::View &&
         item.property("checked").userType() == static_cast<int>(QMetaType::Bool);
}

// A field takes text and a switch is toggled wherever it stands, also as a cell.
QuickKind kindOfDelegate(const QQuickItem& item, QuickKind own) {
  if (own == QuickKind::TextField || own == QuickKind::Switch) return own;
  const QQuickItem* const list = listOfCell(item);
  if (!list || showsItemsOfItsOwn(*list)) return own;
  for (const char* const frame : {"headerItem", "footerItem"}) {
    if (list->property(frame).value<QQuickItem*>() == &item) return own;
  }
  const QuickKind kind = kindOfClass(list->metaObject());
  return kind == QuickKind::CollectionView ? QuickKind::CollectionCell : QuickKind::TableCell;
}

bool isDocumentOfWebView(const QQuickItem& item) {
  const QQuickItem* const parent = item.parentItem();
  return parent && !isDeclared(item) && kindOfClass(parent->metaObject()) == QuickKind::WebView;
}

bool isTreeNode(const QQuickItem& item) {
  const QQuickItem* const row = item.parentItem();
  return row && isTreeRow(*row) && row->property("indicator").value<QQuickItem*>() == &item;
}

}  // namespace

const QQuickItem* listOfCell(const QQuickItem& item) {
  const QQuickItem* const list = listOfDelegate(item, "QQuickItemViewAttached");
  return list ? list : listOfDelegate(item, "QQuickTableViewAttached");
}

const QObject* popupOfItem(const QQuickItem& item) {
  if (!item.inherits("QQuickPopupItem")) return nullptr;
  const QObject* const popup = item.parent();
  return popup && popup->inherits("QQuickPopup") ? popup : nullptr;
}

const QQuickItem* popupDismissedBy(const QQuickItem& item) {
  const QQuickItem* const overlay = item.parentItem();
  if (!overlay || item.acceptedMouseButtons() == Qt::NoButton) return nullptr;
  if (!overlay->inherits("QQuickOverlay") || item.inherits("QQuickPopupItem")) return nullptr;
  const auto stacked = QQuickItemPrivate::get(overlay)->paintOrderChildItems();
  const auto own = std::ranges::find(stacked, &item);
  const auto above =
      std::find_if(own, stacked.end(), [](const auto* other) { return popupOfItem(*other); });
  return above == stacked.end() ? nullptr : *above;
}

const char* titleOfControlPart(const QQuickItem& item) {
  const QQuickItem* const control = item.parentItem();
  if (!control) return nullptr;
  const auto isIn = [&item](const QObject* group, const char* property) {
    return group && group->property(property).value<QQuickItem*>() == &item;
  };
  if (popupDismissedBy(item)) return "dismiss popup";
  if (control->inherits("QQuickSpinBox")) {
    if (isIn(control->property("up").value<QObject*>(), "indicator")) return "Increase";
    if (isIn(control->property("down").value<QObject*>(), "indicator")) return "Decrease";
  } else if (control->inherits("QQuickComboBox")) {
    if (isIn(control, "indicator") && control->property("editable").toBool()) return "Open";
  } else if (control->inherits("QQuickSlider")) {
    if (isIn(control, "handle")) return "Handle";
  }
  return nullptr;
}

bool isControlPart(const QQuickItem& item) {
  return titleOfControlPart(item) || isTreeNode(item);
}

bool isTreeRow(const QQuickItem& item) {
  return item.inherits("QQuickTreeViewDelegate");
}

QuickKind kindOfItem(const QQuickItem& item) {
  if (const QObject* const popup = popupOfItem(item)) return kindOfClass(popup->metaObject());
  if (isDocumentOfWebView(item)) return QuickKind::WebDocument;
  if (titleOfControlPart(item)) return QuickKind::Button;
  if (isTreeNode(item)) return QuickKind::Disclosure;
  QuickKind own = kindOfClass(item.metaObject());
  if (isOwnSwitch(item, own)) own = QuickKind::Switch;
  const bool isList = own == QuickKind::TableView || own == QuickKind::CollectionView;
  if (isList && showsItemsOfItsOwn(item)) return QuickKind::ScrollView;
  return kindOfDelegate(item, own);
}

Class classOfItem(const QQuickItem& item, QuickKind kind) {
  // Told by exactly that name, whatever the application makes of it.
  if (kind == QuickKind::WebView || kind == QuickKind::WebDocument) return uikitClass(kind);
  if (isControlPart(item)) return uikitClass(kind);
  const QObject* const popup = popupOfItem(item);
  return classFor(popup ? popup->metaObject() : item.metaObject(), uikitClass(kind));
}

Class classOfWindow(const QQuickWindow& window) {
  return classFor(window.metaObject(), uikit::UIWindow);
}

bool drawsItself(QuickKind kind) {
  switch (kind) {
    case QuickKind::Button:
    case QuickKind::Switch:
    case QuickKind::Label:
    case QuickKind::TextField:
    case QuickKind::TextView:
    case QuickKind::Picker:
    case QuickKind::Slider:
    case QuickKind::ProgressView:
    case QuickKind::Control:
    case QuickKind::TableCell:
    case QuickKind::CollectionCell:
    case QuickKind::Disclosure:
      return true;
    default:
      return false;
  }
}

}  // namespace tarni::qt
