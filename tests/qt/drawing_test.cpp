// Layers, the border over a view, and pictures.
#include <QtGui/QPainter>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <cmath>
#include <random>
#include <thread>

#include "backends/qt/drawing/QtImage.h"
#include "backends/qt/program/OwnWidgets.h"
#include "backends/qt/program/Stillness.h"
#include "tests/qt/Support.h"

namespace tarni::test {
namespace {

const platform::CGColor kGreen{0, 1, 0, 1};

class Painted : public QWidget {
 public:
  Painted(QWidget* parent, const QColor& color) : QWidget(parent), color_(color) {}

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), color_); }

 private:
  QColor color_;
};

QImage imageOf(const UIViewRef& view) {
  const auto picture = std::dynamic_pointer_cast<const qt::QtImage>(pictureOf(view));
  return picture ? picture->image() : QImage();
}

// What stands on screen, the agent's widgets included.
QRgb onScreen(QWidget& window, QPoint point) {
  QCoreApplication::processEvents();
  return window.grab().toImage().pixel(point);
}

QWidget* overlayIn(const QWidget& window) {
  for (QObject* child : window.children()) {
    auto* const widget = qobject_cast<QWidget*>(child);
    if (widget && qt::isHiddenFromWalks(widget) && widget->isVisible()) return widget;
  }
  return nullptr;
}

// Pages of widgets upon widgets, some of them hidden, masked or closed to the mouse.
TEST(HeldStill, EveryPointAndEveryPictureIsWhatItIsOtherwise) {
  std::mt19937 random(7);
  const auto upTo = [&random](int limit) { return static_cast<int>(random() % limit); };
  QWidget window;
  window.resize(200, 150);
  std::vector<QWidget*> widgets{&window};
  for (int made = 0; made < 300; ++made) {
    auto* const widget = new Painted(widgets[random() % widgets.size()],
                                     static_cast<Qt::GlobalColor>(Qt::red + upTo(8)));
    widget->setGeometry(upTo(160) - 20, upTo(120) - 20, upTo(90), upTo(90));
    widget->setAttribute(Qt::WA_OpaquePaintEvent, upTo(4) == 0);
    widget->setAttribute(Qt::WA_TransparentForMouseEvents, upTo(8) == 0);
    if (upTo(6) == 0) widget->setMask(QRegion(5, 5, 20, 60, QRegion::Ellipse));
    if (upTo(8) == 0) widget->hide();
    widgets.push_back(widget);
  }
  show(window);
  const auto answers = [&] {
    std::vector<UIViewRef> met;
    for (int at = 0; at < 200 * 150; at += 3) {
      met.push_back(viewOf(window)->hitTest({at % 200 + 0.5, std::floor(at / 200.0) + 0.5}));
    }
    std::vector<std::vector<std::byte>> pictures;
    for (QWidget* const widget : widgets) {
      const auto picture = pictureOf(viewOf(*widget));
      pictures.push_back(picture ? picture->JPEGRepresentation(1) : std::vector<std::byte>());
    }
    return std::pair(met, pictures);
  };
  const auto before = answers();
  const auto held = qt::stillness();
  EXPECT_EQ(answers(), before);
}

TEST(HeldStill, PicturesOfPartsAreWhatTheyAreOtherwise) {
  QWidget window;
  window.resize(200, 200);
  QListWidget list(&window);
  list.setGeometry(7, 11, 150, 150);
  list.setAlternatingRowColors(true);
  for (int row = 0; row < 5; ++row) list.addItem(QString(row + 3, QChar('a' + row)));
  list.setCurrentRow(2);
  show(window);
  const auto pictures = [&] {
    std::vector<QImage> all;
    for (const UIViewRef& part : subviewsOf(viewOf(list))) all.push_back(imageOf(part));
    return all;
  };
  const std::vector<QImage> before = pictures();
  ASSERT_GE(before.size(), 5U);
  const auto held = qt::stillness();
  EXPECT_EQ(pictures(), before);
  // Something else is drawn as soon as the program has run.
  list.item(4)->setText("other");
  QCoreApplication::processEvents();
  EXPECT_NE(pictures(), before);
}

TEST(Border, IsDrawnOverTheViewAndIsNothingElse) {
  QWidget window;
  window.resize(200, 200);
  Painted child(&window, Qt::red);
  child.setGeometry(50, 60, 100, 80);
  show(window);
  const auto before = subviewsOf(viewOf(window));
  platform::CALayer& layer = viewOf(child)->layer();
  EXPECT_EQ(layer.borderWidth(), 0);
  EXPECT_EQ(layer.borderColor(), std::nullopt);
  layer.setBorderWidth(4);
  layer.setBorderColor(kGreen);
  EXPECT_EQ(layer.borderWidth(), 4);
  EXPECT_EQ(layer.borderColor(), kGreen);
  EXPECT_EQ(onScreen(window, {51, 61}), qRgb(0, 255, 0));
  EXPECT_EQ(onScreen(window, {148, 138}), qRgb(0, 255, 0));
  EXPECT_EQ(onScreen(window, {55, 65}), qRgb(255, 0, 0)) << "inside of it";
  EXPECT_NE(onScreen(window, {49, 100}), qRgb(0, 255, 0)) << "outside of it";
  EXPECT_EQ(subviewsOf(viewOf(window)), before);
  EXPECT_EQ(viewOf(window)->hitTest({51, 61}), viewOf(child));
  ASSERT_NE(overlayIn(window), nullptr);
  EXPECT_EQ(overlayIn(window)->focusPolicy(), Qt::NoFocus);
  layer.setBorderWidth(0);
  EXPECT_EQ(overlayIn(window), nullptr);
  EXPECT_EQ(onScreen(window, {51, 61}), qRgb(255, 0, 0));
}

TEST(Border, FollowsItsViewAndKeepsToItsVisiblePart) {
  QScrollArea area;
  auto* const page = new QWidget;
  page->resize(300, 1000);
  auto* const child = new Painted(page, Qt::red);
  child->setGeometry(0, 150, 100, 100);
  area.setWidget(page);
  area.resize(200, 200);
  show(area);
  viewOf(*child)->layer().setBorderColor(kGreen);
  viewOf(*child)->layer().setBorderWidth(4);
  const QRect viewport = area.viewport()->geometry();
  ASSERT_NE(overlayIn(area), nullptr);
  EXPECT_EQ(overlayIn(area)->geometry(),
            QRect(viewport.left(), viewport.top() + 150, 100, 100) & viewport);
  area.verticalScrollBar()->setValue(120);
  const auto follows = [&] {
    return overlayIn(area)->geometry() == QRect(viewport.left(), viewport.top() + 30, 100, 100);
  };
  while (!follows()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  area.verticalScrollBar()->setValue(500);
  while (overlayIn(area)) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST(Drawing, IsDoneAtOnceWithoutRunningOtherEvents) {
  struct Counting : QWidget {
    void paintEvent(QPaintEvent*) override { ++paints; }
    int paints = 0;
  } window;
  show(window);
  bool hasRun = false;
  QTimer::singleShot(0, [&] { hasRun = true; });
  const int before = window.paints;
  window.update();
  platform::current().transaction->flush();
  EXPECT_EQ(window.paints, before + 1);
  EXPECT_FALSE(hasRun);
  QCoreApplication::processEvents();
}

TEST(Picture, ShowsTheViewAndEverythingInIt) {
  QWidget window;
  window.resize(200, 150);
  Painted outer(&window, Qt::blue);
  outer.setGeometry(20, 30, 100, 80);
  Painted inner(&outer, Qt::yellow);
  inner.setGeometry(10, 10, 30, 20);
  show(window);
  const QImage picture = imageOf(viewOf(outer));
  EXPECT_EQ(pictureOf(viewOf(outer))->size(), (platform::CGSize{100, 80}));
  EXPECT_EQ(picture.pixel(5, 5), qRgb(0, 0, 255));
  EXPECT_EQ(picture.pixel(15, 15), qRgb(255, 255, 0));
  EXPECT_EQ(picture.pixel(99, 79), qRgb(0, 0, 255));
  const QImage all = imageOf(viewOf(window));
  EXPECT_EQ(all.size(), QSize(200, 150));
  EXPECT_EQ(all.pixel(35, 45), qRgb(255, 255, 0));
  EXPECT_EQ(all.pixel(1, 1), window.palette().color(QPalette::Window).rgb());
  inner.hide();
  EXPECT_NE(imageOf(viewOf(inner)).pixel(5, 5), qRgb(255, 255, 0)) << "nothing of it is shown";
  outer.resize(0, 10);
  EXPECT_EQ(pictureOf(viewOf(outer)), nullptr);
}

TEST(Picture, OfACellIsCroppedAndEncodedOnAnyThread) {
  QListWidget list;
  list.addItems({"a", "b", "c"});
  list.item(1)->setBackground(Qt::red);
  list.resize(120, 200);
  show(list);
  const UIViewRef cell = subviewsOf(viewOf(list), "UITableViewCell")[1];
  const auto picture = pictureOf(cell);
  EXPECT_EQ(picture->size(), cell->bounds().size);
  const auto cropped = picture->crop({{-10, -10}, {40, 20}});
  EXPECT_EQ(cropped->size(), (platform::CGSize{40, 20}));
  std::vector<std::byte> bytes;
  std::thread([&] { bytes = cropped->PNGRepresentation(); }).join();
  const auto decoded = [&bytes](const char* format) {
    return QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()),
                            static_cast<int>(bytes.size()), format);
  };
  EXPECT_EQ(decoded("PNG").pixel(5, 15), qRgb(0, 0, 0)) << "outside of the cell";
  EXPECT_EQ(decoded("PNG").pixel(38, 11), qRgb(255, 0, 0));
  EXPECT_LT(picture->JPEGRepresentation(0.1).size(), picture->JPEGRepresentation(1).size());
  bytes = picture->JPEGRepresentation(1);
  EXPECT_NEAR(decoded("JPEG").pixelColor(decoded("JPEG").width() - 3, 1).red(), 255, 4);
  EXPECT_TRUE(picture->crop({{0, 0}, {0, 0}})->JPEGRepresentation(0.6).empty());
}

}  // namespace
}  // namespace tarni::test
