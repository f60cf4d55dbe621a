#include "backends/qt/ViewFactory.h"

#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QGraphicsView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QToolButton>

#include "backends/qt/QtPages.h"
#include "backends/qt/items/QtGraphicsView.h"
#include "backends/qt/items/QtHeader.h"
#include "backends/qt/items/QtItemView.h"
#include "backends/qt/views/QtBars.h"
#include "backends/qt/views/QtControls.h"
#include "backends/qt/views/QtExtension.h"
#include "backends/qt/views/QtScrollView.h"
#include "backends/qt/views/QtSubControls.h"

namespace tarni::qt {
namespace {

std::shared_ptr<QtView> makeControl(QWidget& widget, Kind kind) {
  if (qobject_cast<QAbstractSpinBox*>(&widget)) return std::make_shared<QtSpinBox>(widget, kind);
  if (qobject_cast<QSlider*>(&widget)) return std::make_shared<QtSlider>(widget, kind);
  if (qobject_cast<::QScrollBar*>(&widget)) return std::make_shared<QtScrollBar>(widget, kind);
  if (qobject_cast<QAbstractSlider*>(&widget)) {
    return std::make_shared<QtWithValue<QtControl>>(widget, kind);
  }
  return std::make_shared<QtControl>(widget, kind);
}

std::shared_ptr<QtView> makeByKind(QWidget& widget) {
  const Kind kind = kindOfWidget(widget);
  switch (kind) {
    case Kind::Control:
    case Kind::Slider:
      return makeControl(widget, kind);
    case Kind::Picker:
      return std::make_shared<QtComboBox>(widget, kind);
    case Kind::Label:
      return std::make_shared<QtLabel>(widget, kind);
    case Kind::Button:
      if (qobject_cast<QToolButton*>(&widget)) return std::make_shared<QtToolButton>(widget, kind);
      return std::make_shared<QtButton>(widget, kind);
    case Kind::Switch:
      return std::make_shared<QtSwitch>(widget, kind);
    case Kind::TextField:
      return std::make_shared<QtTextField>(widget, kind);
    case Kind::TextView:
      return std::make_shared<QtTextView>(widget, kind);
    case Kind::ScrollView:
      if (qobject_cast<QGraphicsView*>(&widget)) {
        return std::make_shared<QtGraphicsView>(widget, kind);
      }
      return std::make_shared<QtScrollView>(widget, kind);
    case Kind::TableView:
      return std::make_shared<QtItemView>(widget, kind);
    case Kind::HeaderView:
      return std::make_shared<QtHeader>(widget, kind);
    case Kind::TabBar:
      return std::make_shared<QtTabs>(widget, kind);
    case Kind::MenuBar:
    case Kind::Menu:
      return std::make_shared<QtActions>(widget, kind);
    default:
      return std::make_shared<QtView>(widget, kind);
  }
}

}  // namespace

std::shared_ptr<QtView> makeView(QWidget& widget) {
  std::shared_ptr<QtView> view = extensions().makeView(widget);
  if (!view) view = makeByKind(widget);
  watchPages(widget);
  return view;
}

}  // namespace tarni::qt
