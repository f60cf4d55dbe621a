// What takes a tap, for the recorders, is what the toolkit itself says that the person hit: for
// random points in random pages of standard controls, which lie over, inside and out of each other,
// hidden, clipped and turned. A press asks it which item takes that, a picture what it shows there.
// TARNI_SEED makes others.
#include <QtQuick/QQuickItemGrabResult>
#include <cstdlib>
#include <random>

#include "agent/session/screen/Survey.h"
#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

// QML text. Each shape has a colour that nothing else on the page has, and is called by it.
class RandomPage {
 public:
  explicit RandomPage(unsigned seed) : random_(seed) {}

  bool oneIn(int count) { return number(count) == 0; }
  int number(int end) { return std::uniform_int_distribution<>(0, end - 1)(random_); }

  std::string items(int depth) {
    std::string all;
    for (int i = 3 + number(3); i > 0; --i) {
      all += depth > 0 && !oneIn(3) ? container(depth - 1) : leaf();
    }
    return all;
  }

 private:
  std::string leaf() {
    const char* const kinds[] = {"Button { text: 'Button'",
                                 "CheckBox { text: 'Check'",
                                 "RadioButton { text: 'Radio'",
                                 "Switch {",
                                 "TextField { text: 'Field'",
                                 "TextArea { text: 'Area'",
                                 "Slider {",
                                 "RangeSlider {",
                                 "Dial {",
                                 "SpinBox {",
                                 "SpinBox { editable: true",
                                 "Tumbler { model: 9",
                                 "ComboBox { model: ['a', 'b']",
                                 "ComboBox { editable: true; model: ['a', 'b']",
                                 "ItemDelegate { text: 'Row'",
                                 "Label { text: 'Label'",
                                 "Text { text: '<a href=\"x\">Link</a>'",
                                 "ProgressBar { value: 0.5",
                                 "ScrollBar { size: 0.4; policy: ScrollBar.AlwaysOn",
                                 "TabBar { TabButton { text: 'One' } TabButton { text: 'Two' }"};
    if (oneIn(2)) return shape("");
    return kinds[number(std::size(kinds))] + placed() + "}\n";
  }

  std::string shape(const std::string& contents) {
    const char* const touched[] = {"", "", "MouseArea { anchors.fill: parent }",
                                   "MouseArea { anchors.fill: parent; enabled: false }",
                                   "MouseArea { x: 10; y: 10; width: 30; height: 30 }"};
    ++shapes_;
    const QColor colour(20, 40 + shapes_ / 100, 50 + shapes_ % 100);
    const bool isSeen = !contents.empty() || !oneIn(8);
    return "Rectangle { color: objectName; objectName: '" + colour.name().toStdString() + '\'' +
           placed() + (isSeen ? touched[number(std::size(touched))] : "opacity: 0") + contents +
           "}\n";
  }

  std::string container(int depth) {
    const std::string inside = items(depth);
    switch (number(10)) {
      case 0:
        return "Flickable { contentWidth: 600; contentHeight: 800; contentY: " +
               std::to_string(number(300)) + (oneIn(3) ? "; interactive: false" : "") + placed() +
               inside + "}\n";
      case 1:
        return "ListView { model: 5" + placed() + "delegate: Item { width: 150; height: 60\n" +
               inside + "} }\n";
      case 2:
        return "GroupBox { title: 'Group'" + placed() + "Item { anchors.fill: parent\n" + inside +
               "} }\n";
      case 3:
        return "Pane {" + placed() + inside + "}\n";
      case 4:
        return "SwipeView { interactive: false" + placed() + "Item {\n" + inside + "} Item {\n" +
               items(depth) + "} }\n";
      case 5:
        return (oneIn(2) ? "Column {" : "Row {") + placed() + inside + "}\n";
      case 6:
        return "MouseArea {" + placed() + inside + "}\n";
      case 7:
        return "ScrollView {" + placed() + "Item { implicitWidth: 500; implicitHeight: 500\n" +
               inside + "} }\n";
      case 8:
        return shape(inside);
      default:
        return "Item {" + placed() + inside + "}\n";
    }
  }

  // As large as a control has to be, so that it draws nothing beside itself.
  std::string placed() {
    std::string all = "\n";
    const auto with = [&](const char* name, int first, int end) {
      all += name + (": " + std::to_string(first + number(end - first))) + "; ";
    };
    with("x", -20, 250);
    with("y", -20, 180);
    with("width", 110, 230);
    with("height", 60, 160);
    if (oneIn(7)) all += "visible: false; ";
    if (oneIn(7)) all += "enabled: false; ";
    if (oneIn(4)) all += "clip: true; ";
    if (oneIn(3)) with("z", -1, 3);
    if (oneIn(8)) with("rotation", -40, 40);
    if (oneIn(10)) all += "scale: 1.3; ";
    return all + '\n';
  }

  std::mt19937 random_;
  int shapes_ = 0;
};

std::string pathOf(const QQuickItem* item) {
  std::string path;
  for (; item; item = item->parentItem()) {
    path = std::string("\\") + item->metaObject()->className() + item->objectName().toStdString() +
           path;
  }
  return path;
}

bool isIn(const QQuickItem* item, const QQuickItem* outer) {
  return item == outer || outer->isAncestorOf(item);
}

// True when the item is there, and nothing that it stands in hides it.
bool shows(const QQuickItem* item, QPointF point) {
  for (const QQuickItem* at = item; at; at = at->parentItem()) {
    if (at->opacity() <= 0) return false;
    if (at != item && at->clip() && !at->contains(at->mapFromScene(point))) return false;
  }
  return item->isVisible() && item->contains(item->mapFromScene(point));
}

// What takes the press may be a part that a control is made of, or a mouse area that is to what it
// stands in what a recognizer is.
const QQuickItem* meantBy(const QQuickItem* taker) {
  const QQuickItem* const outer = taker->parentItem();
  if (taker->inherits("QQuickMouseArea") && taker->childItems().isEmpty()) return outer;
  if (taker->inherits("QQuickPathView")) return outer->parentItem();
  const bool isFixed = outer->inherits("QQuickSpinBox") && !outer->property("editable").toBool();
  return isFixed ? outer : taker;
}

bool isControl(const QQuickItem* item) {
  return item->inherits("QQuickControl") && !item->inherits("QQuickPane") &&
         !item->inherits("QQuickContainer");
}

// What takes the press is right and, where that is not a control, so is the shape that is seen
// there in it. Texts and controls that take none let the eye through, and stand there themselves.
bool isRight(const QQuickItem* met, const QQuickItem* taker, const QQuickItem* seen,
             QPointF point) {
  const QQuickItem* const outer = taker ? meantBy(taker) : nullptr;
  if (outer && isControl(outer)) return met && (met == outer || met->parentItem() == outer);
  if (outer && met == outer) return true;
  if (outer && !(met && isIn(met, outer))) return false;
  const bool isShape = met && met->objectName().startsWith('#');
  if (seen && (!met || isShape)) return met == seen;
  return !met || shows(met, point);
}

class Hits : public QuickScreen {
 protected:
  // What is worked out from level to level is what the toolkit tells of each item.
  static void expectTruePlaces(const UIViewRef& view) {
    for (const UIViewRef& child : view->subviews()) {
      const CGRect told = platform::convertRect(child->frame(), view, nullptr);
      const CGRect worked = session::placeOf(child).rect;
      EXPECT_NEAR(worked.midX(), told.midX(), 0.001) << nameOf(child);
      EXPECT_NEAR(worked.midY(), told.midY(), 0.001) << nameOf(child);
      EXPECT_NEAR(worked.size.width, told.size.width, 0.001) << nameOf(child);
      expectTruePlaces(child);
    }
  }
  // What the toolkit draws, but for the window's own colour.
  QImage picture() const {
    const auto grab = window_->contentItem()->grabToImage();
    bool isReady = false;
    QObject::connect(grab.data(), &QQuickItemGrabResult::ready, [&] { isReady = true; });
    EXPECT_TRUE(runUntil([&] { return isReady; }));
    return grab->image();
  }

  // The shape of that colour; null when no shape has it.
  const QQuickItem* shapeAt(QPointF point, const QColor& colour) const {
    for (const auto* const item : window_->findChildren<QQuickItem*>(colour.name())) {
      if (shows(item, point)) return item;
    }
    return nullptr;
  }

  // The item that takes a press there; null when none does.
  const QQuickItem* takerAt(QPointF point) const {
    send(QEvent::MouseButtonPress, point, Qt::LeftButton);
    QQuickItem* const taker = window_->mouseGrabberItem();
    if (taker) taker->ungrabMouse();
    send(QEvent::MouseButtonRelease, {-50, -50}, Qt::NoButton);
    return taker;
  }

 private:
  void send(QEvent::Type type, QPointF point, Qt::MouseButtons held) const {
    QMouseEvent event(type, point, point, point, Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(window_.get(), &event);
  }
};

TEST_F(Hits, AreWhatTheToolkitTells) {
  const char* const given = std::getenv("TARNI_SEED");
  const unsigned seed = given ? std::strtoul(given, nullptr, 10) : 1;
  int points = 0;
  int taken = 0;
  int wrong = 0;
  for (unsigned page = 0; page < 12 && wrong == 0; ++page) {
    RandomPage random(seed + page);
    show(random.items(3));
    ASSERT_FALSE(HasFatalFailure());
    expectTruePlaces(root());
    QImage drawn = picture();
    for (int i = 0; i < 100; ++i, ++points) {
      const QPoint at(random.number(400), random.number(300));
      const QPointF point = QPointF(at) + QPointF(0.5, 0.5);
      std::string told;
      const auto isRightNow = [&] {
        const QQuickItem* const met = qt::itemOfView(root()->hitTest({point.x(), point.y()}));
        const QQuickItem* const taker = takerAt(point);
        const QQuickItem* const seen = shapeAt(point, drawn.pixelColor(at * drawn.width() / 400));
        taken += taker ? 1 : 0;
        told = "met " + pathOf(met) + ",\ntaken by " + pathOf(taker) + ",\nseen " + pathOf(seen);
        return isRight(met, taker, seen, point);
      };
      // A press may have set things in motion: then what counts is how they come to rest.
      const auto isRightAtRest = [&] {
        drawn = picture();
        return isRightNow();
      };
      if (isRightNow() || runUntil(isRightAtRest)) continue;
      ++wrong;
      ADD_FAILURE() << "TARNI_SEED=" << seed + page << " at " << at.x() << ", " << at.y() << ": "
                    << told;
    }
  }
  std::printf("%d points, %d taken, TARNI_SEED=%u\n", points, taken, seed);
}

}  // namespace
}  // namespace tarni::test
