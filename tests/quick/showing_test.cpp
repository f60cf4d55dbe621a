// Pictures, borders, and what the hooks of appearance hear of popups and pages.
#include "backends/qt/drawing/QtImage.h"
#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

class Showing : public QuickScreen {
 protected:
  static QImage imageOf(const UIViewRef& view) {
    const auto drawn = std::dynamic_pointer_cast<const qt::QtImage>(pictureOf(view));
    return drawn ? drawn->image() : QImage();
  }
  // At a point of the picture, whatever its scale.
  static QColor at(const QImage& picture, double x, double y) {
    const double scale = picture.devicePixelRatio();
    return picture.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
  }
};

TEST_F(Showing, PicturesShowTheViewAtTheScreensScale) {
  show(R"(Rectangle { objectName: "red"; x: 50; y: 60; width: 100; height: 80; color: "red"
    Rectangle { objectName: "blue"; x: 10; y: 10; width: 20; height: 20; color: "blue" } })");
  const double scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble();
  const QImage all = imageOf(root());
  EXPECT_EQ(all.size(), QSize(400, 300) * scale);
  EXPECT_EQ(at(all, 10, 10), QColor(Qt::white)) << "where no item draws";
  EXPECT_EQ(at(all, 52, 62), QColor(Qt::red));
  const QImage red = imageOf(view("red"));
  EXPECT_EQ(red.size(), QSize(100, 80) * scale);
  EXPECT_EQ(at(red, 2, 2), QColor(Qt::red));
  EXPECT_EQ(at(red, 20, 20), QColor(Qt::blue));
  const auto jpeg = qt::QtImage(red).JPEGRepresentation(0.6);
  EXPECT_GT(jpeg.size(), 100U);
  window_->hide();
  imageOf(root());
}

TEST_F(Showing, ABorderStandsAboveEverythingAndIsNothingElse) {
  show(R"(Rectangle { objectName: "red"; x: 50; y: 60; width: 100; height: 80; color: "red" }
    Rectangle { x: 0; y: 0; width: 400; height: 300; z: 10; color: "blue" })");
  const auto before = namesIn(root());
  const std::string metBefore = met(51, 61);
  platform::CALayer& layer = view("red")->layer();
  layer.setBorderColor(platform::CGColor{0, 1, 0, 1});
  layer.setBorderWidth(4);
  EXPECT_EQ(at(imageOf(root()), 52, 62), QColor(Qt::green));
  EXPECT_EQ(at(imageOf(root()), 100, 100), QColor(Qt::blue)) << "inside of it";
  EXPECT_EQ(namesIn(root()), before);
  EXPECT_EQ(met(51, 61), metBefore);
  object("red")->setX(200);
  EXPECT_TRUE(runUntil([&] { return at(imageOf(root()), 202, 62) == QColor(Qt::green); }));
  layer.setBorderWidth(0);
  EXPECT_EQ(at(imageOf(root()), 202, 62), QColor(Qt::blue));
}

TEST_F(Showing, ABorderThatIsTakenOffStaysOffWhileNothingCanBeDeleted) {
  show(R"(Rectangle { objectName: "red"; width: 100; height: 80 })");
  const auto countAll = [this] {
    return std::ranges::count_if(window_->contentItem()->childItems(), &QQuickItem::isVisible);
  };
  const auto before = countAll();
  platform::CALayer& layer = view("red")->layer();
  layer.setBorderWidth(4);
  EXPECT_EQ(countAll(), before + 1);
  layer.setBorderWidth(0);
  // As in a program that runs its events itself.
  bool isLater = false;
  QTimer::singleShot(100, [&] { isLater = true; });
  while (!isLater) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_EQ(countAll(), before);
}

TEST_F(Showing, APopupIsLoadingUntilItHasOpened) {
  show(R"(Popup { objectName: "slow"; width: 50; height: 50
      enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 60 } } }
    Popup { objectName: "quick"; width: 50; height: 50; enter: null; exit: null })");
  root();
  Appearances appearances;
  QMetaObject::invokeMethod(object<QObject>("slow"), "open");
  EXPECT_EQ(appearances.heard, "W");
  ASSERT_TRUE(runUntil([&] { return object<QObject>("slow")->property("opened").toBool(); }));
  EXPECT_EQ(appearances.heard, "WD");
  appearances.heard.clear();
  QMetaObject::invokeMethod(object<QObject>("quick"), "open");
  EXPECT_EQ(appearances.heard, "WD");
  QMetaObject::invokeMethod(object<QObject>("quick"), "close");
  runUntil([&] { return !object<QObject>("quick")->property("visible").toBool(); });
  appearances.heard.clear();
  QMetaObject::invokeMethod(object<QObject>("quick"), "open");
  EXPECT_EQ(appearances.heard, "WD") << "when it opens again, too";
}

}  // namespace
}  // namespace tarni::test
