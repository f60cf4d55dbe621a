// The parts of controls: a tap on each does to the program what the part is called.
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>

#include "platform/UIKit/UIControls.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {
namespace {

using platform::UIViewRef;

class Parts : public PageTest {
 protected:
  void SetUp() override {
    slider_->setRange(0, 100);
    slider_->setValue(50);
    bar_->setValue(50);
    words_->setEditable(true);
    words_->addItems({"red", "green"});
    tool_->setPopupMode(QToolButton::MenuButtonPopup);
    tool_->setText("a tool with a menu");
    tool_->setMenu(menu_);
    menu_->addAction("entry");
    QObject::connect(tool_, &QToolButton::clicked, [this] { ++clicks_; });
    tree_->setHeaderHidden(true);
    new QTreeWidgetItem(new QTreeWidgetItem(tree_, {"branch"}), {"leaf"});
    show(window_);
  }

  // The button of that title among the subviews of the view; null when there is none.
  static UIViewRef part(const UIViewRef& view, const std::string& title) {
    for (const UIViewRef& child : view->subviews()) {
      const auto button = platform::as<platform::UIButton>(child);
      if (button && button->currentTitle() == title) return child;
    }
    return nullptr;
  }
  static Task<void> tapOn(UIViewRef view, std::string title) {
    const UIViewRef button = part(view, title);
    EXPECT_TRUE(button) << title;
    if (!button) co_return;
    const platform::CGRect bounds = button->bounds();
    const platform::CGPoint middle = button->convertPointToWindow({bounds.midX(), bounds.midY()});
    EXPECT_EQ(button->window()->hitTest(middle), button) << title;
    co_await KIFAdditions::tap(button);
  }
  static Task<void> tapOn(QWidget* widget, std::string title) {
    return tapOn(qt::viewOfWidget(widget), std::move(title));
  }
  // Taps beside the popup that is open.
  static Task<void> dismiss() {
    return tapOn(platform::current().application->keyWindow(), "dismiss popup");
  }
  // Some popups run a loop of their own inside the tap that opens them.
  Task<void> openAndDismiss() {
    co_await tapOn(words_, "Open");
    EXPECT_TRUE(words_->view()->isVisible());
    co_await dismiss();
    EXPECT_FALSE(words_->view()->isVisible());
    co_await tapOn(tool_, "Show menu");
    EXPECT_TRUE(menu_->isVisible());
    co_await dismiss();
    EXPECT_FALSE(menu_->isVisible());
    EXPECT_EQ(clicks_, 0);
    co_await tap(tool_);
    EXPECT_EQ(clicks_, 1);
  }

  QSpinBox* spin_ = add(new QSpinBox);
  QSlider* slider_ = add(new QSlider(Qt::Horizontal));
  QScrollBar* bar_ = add(new QScrollBar(Qt::Horizontal));
  QComboBox* words_ = add(new QComboBox);
  QToolButton* tool_ = add(new QToolButton);
  QMenu* menu_ = new QMenu(tool_);
  QTreeWidget* tree_ = add(new QTreeWidget);
  int clicks_ = 0;
};

TEST_F(Parts, ArrowsOfASpinBoxStep) {
  EXPECT_FALSE(part(qt::viewOfWidget(spin_), "Decrease")->isUserInteractionEnabled());
  finish(tapOn(spin_, "Increase"));
  finish(tapOn(spin_, "Increase"));
  finish(tapOn(spin_, "Decrease"));
  EXPECT_EQ(spin_->value(), 1);
  spin_->setButtonSymbols(QSpinBox::NoButtons);
  EXPECT_EQ(part(qt::viewOfWidget(spin_), "Increase"), nullptr);
}

TEST_F(Parts, GrooveOfASliderStepsAndItsHandleLeavesItAsItIs) {
  finish(tapOn(slider_, "Increase"));
  EXPECT_EQ(slider_->value(), 60);
  finish(tapOn(slider_, "Handle"));
  EXPECT_EQ(slider_->value(), 60);
  slider_->setInvertedAppearance(true);
  finish(tapOn(slider_, "Decrease"));
  EXPECT_EQ(slider_->value(), 50);
  finish(tapOn(bar_, "Line right"));
  finish(tapOn(bar_, "Page left"));
  EXPECT_EQ(bar_->value(), 41);
  bar_->hide();
  EXPECT_THAT(qt::viewOfWidget(bar_)->subviews(), testing::IsEmpty());
}

TEST_F(Parts, ArrowsOpenWhatATapBesideItCloses) {
  finish(openAndDismiss());
}

TEST_F(Parts, NodeOfATreeIsTheSameOpenAndClosed) {
  finish(tapOn(tree_, "branch"));
  EXPECT_TRUE(tree_->topLevelItem(0)->isExpanded());
  finish(tapOn(tree_, "branch"));
  EXPECT_FALSE(tree_->topLevelItem(0)->isExpanded());
  EXPECT_EQ(part(qt::viewOfWidget(tree_), "leaf"), nullptr) << "nothing is below it";
}

}  // namespace
}  // namespace tarni::test
