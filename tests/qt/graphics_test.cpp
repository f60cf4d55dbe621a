// The items of a graphics view: what they are, where they are, and how long they are the same.
#include <QtWidgets/QGraphicsRectItem>
#include <QtWidgets/QGraphicsTextItem>
#include <QtWidgets/QGraphicsView>
#include <memory>

#include "tests/qt/Support.h"

namespace tarni::test {
namespace {

class Graphics : public testing::Test {
 protected:
  void SetUp() override {
    graphics_.setGeometry(10, 20, 300, 260);
    square_->setToolTip("Square");
    square_->setFlag(QGraphicsItem::ItemIsSelectable);
    title_->setPos(20, 20);
    title_->setObjectName("title");
    picture_->setPos(150, 10);
    window_.resize(400, 300);
    show(window_);
    graphics_.centerOn(0, 0);
  }

  UIViewRef labelled(const std::string& label) const {
    for (const UIViewRef& view : qt::viewOfWidget(&graphics_)->subviews()) {
      if (view->accessibilityLabel() == label) return view;
    }
    return nullptr;
  }
  UIViewRef hit(const UIViewRef& view) { return viewOf(window_)->hitTest(middleInWindow(view)); }

  QWidget window_;
  QGraphicsScene scene_{0, 0, 1000, 1000};
  mutable QGraphicsView graphics_{&scene_, &window_};
  QGraphicsRectItem* square_ = scene_.addRect(0, 0, 100, 100);
  QGraphicsTextItem* title_ = scene_.addText("Title");
  QGraphicsPixmapItem* picture_ = scene_.addPixmap(QPixmap(30, 20));
  QGraphicsRectItem* far_ = scene_.addRect(900, 900, 10, 10);
};

TEST_F(Graphics, ShowsWhatIsSeenOfItsSceneBackToFront) {
  const UIViewRef square = labelled("Square");
  ASSERT_NE(square, nullptr);
  std::vector<UIViewRef> items = subviewsOf(viewOf(graphics_));
  ASSERT_GE(items.size(), 3U);
  items.resize(3);
  EXPECT_EQ(items[0], square);
  EXPECT_EQ(classOf(square), "UIControl");
  EXPECT_EQ(classOf(items[1]), "UILabel");
  EXPECT_EQ(as<platform::UILabel>(items[1])->labelText(), "Title");
  EXPECT_EQ(items[1]->accessibilityIdentifier(), "title");
  EXPECT_EQ(classOf(items[2]), "UIImageView");
  EXPECT_EQ(items[2]->bounds().size, (CGSize{30, 20}));
  for (const UIViewRef& item : {items[1], items[2]}) EXPECT_EQ(hit(item), item);
  square_->setZValue(1);
  EXPECT_EQ(subviewsOf(viewOf(graphics_))[2], square);
  EXPECT_EQ(hit(items[1]), square) << "now it covers the title";
}

TEST_F(Graphics, AnItemIsTheSameViewUntilItLeavesTheScene) {
  const UIViewRef square = labelled("Square");
  ASSERT_NE(square, nullptr);
  square_->moveBy(5, 5);
  EXPECT_EQ(labelled("Square"), square);
  const std::unique_ptr<QGraphicsItem> taken(square_);
  scene_.removeItem(square_);
  EXPECT_EQ(square->superview(), nullptr);
  EXPECT_TRUE(square->isHidden());
  const auto text = subviewsOf(viewOf(graphics_), "UILabel");
  ASSERT_EQ(text.size(), 1U);
  const auto pictures = subviewsOf(viewOf(graphics_), "UIImageView");
  ASSERT_EQ(pictures.size(), 1U);
  delete title_;
  scene_.clear();
  for (const UIViewRef& gone : {square, text[0], pictures[0]}) {
    EXPECT_TRUE(gone->isHidden());
    EXPECT_EQ(gone->bounds(), CGRect{});
    EXPECT_EQ(gone->accessibilityLabel(), std::nullopt);
  }
  EXPECT_TRUE(subviewsOf(viewOf(graphics_), "UIImageView").empty());
}

}  // namespace
}  // namespace tarni::test
