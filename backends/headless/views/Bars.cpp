#include "backends/headless/views/Bars.h"

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {
namespace {

constexpr double kEdge = 16;            // points
constexpr double kButtonWidth = 80;     // points
constexpr double kIndicatorWidth = 12;  // points

platform::Class navigationItemViewClass() {
  return platform::defineClass("UINavigationItemView", platform::uikit::UIView);
}

platform::Class navigationButtonClass() {
  return platform::defineClass("UINavigationButton", platform::uikit::UIButton);
}

platform::Class backIndicatorClass() {
  return platform::defineClass("_UINavigationBarBackIndicatorView", platform::uikit::UIImageView);
}

// The line that parts a bar from the screen's content.
void drawEdge(Canvas& canvas, const platform::CGRect& bounds, double y) {
  canvas.line({bounds.minX(), y}, {bounds.maxX(), y}, colors::kLightGray, 0.5);
}

}  // namespace

// --- BarItem

BarItem::BarItem(std::optional<std::string> title, platform::Class cls)
    : Control(cls), title_(std::move(title)) {}

void BarItem::drawContent(Canvas& canvas) const {
  const TextStyle style{.size = 15, .color = colors::kBlue, .alignment = TextAlignment::Center};
  if (title_) canvas.text(*title_, bounds(), style);
}

// --- NavigationBar

NavigationBar::NavigationBar(std::string title)
    : View(platform::uikit::UINavigationBar),
      itemView_(std::make_shared<View>(navigationItemViewClass())),
      titleLabel_(std::make_shared<Label>(std::move(title))) {
  setBackgroundColor(colors::kBackground);
  titleLabel_->setTextStyle({.bold = true, .alignment = TextAlignment::Center});
  itemView_->setUserInteractionEnabled(false);
  itemView_->addSubview(titleLabel_);
  addSubview(itemView_);
}

void NavigationBar::setTitle(std::string title) {
  titleLabel_->setText(std::move(title));
}

std::string NavigationBar::title() const {
  return titleLabel_->labelText().value_or("");
}

std::shared_ptr<Button> NavigationBar::setBackButton(std::string title, Control::Action action) {
  if (!backIndicator_) {
    backIndicator_ = std::make_shared<View>(backIndicatorClass());
    backIndicator_->setUserInteractionEnabled(false);
    addSubview(backIndicator_);
  }
  replace(backButton_, std::move(title), std::move(action));
  return backButton_;
}

std::shared_ptr<Button> NavigationBar::setRightButton(std::string title, Control::Action action) {
  replace(rightButton_, std::move(title), std::move(action));
  return rightButton_;
}

void NavigationBar::replace(std::shared_ptr<Button>& button, std::string title,
                            Control::Action action) {
  if (button) button->removeFromSuperview();
  button = std::make_shared<Button>(std::move(title), navigationButtonClass());
  button->onTap(std::move(action));
  addSubview(button);
  layoutSubviews();
}

void NavigationBar::layoutSubviews() {
  const platform::CGSize size = bounds().size;
  const double left = kEdge + kIndicatorWidth;
  const platform::CGSize middle{size.width - 2 * (left + kButtonWidth), size.height};
  itemView_->setFrame({{left + kButtonWidth, 0}, middle});
  titleLabel_->setFrame({{0, 0}, middle});
  if (backIndicator_) backIndicator_->setFrame({{kEdge, 0}, {kIndicatorWidth, size.height}});
  if (backButton_) backButton_->setFrame({{left, 0}, {kButtonWidth, size.height}});
  if (rightButton_) {
    rightButton_->setFrame({{size.width - kEdge - kButtonWidth, 0}, {kButtonWidth, size.height}});
  }
}

// A tap on the back indicator, which takes no touches itself, goes back.
bool NavigationBar::handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) {
  if (phase == platform::UITouchPhase::Ended && backIndicator_ &&
      backIndicator_->frame().contains(touch.locationInView(ref()))) {
    backButton_->sendActions(ControlEvent::TouchUpInside);
  }
  return true;
}

void NavigationBar::drawContent(Canvas& canvas) const {
  drawEdge(canvas, bounds(), bounds().maxY());
  if (!backIndicator_) return;
  constexpr double kReach = 8;  // points from the tip of the arrow to its ends
  const platform::CGRect area = backIndicator_->frame();
  const platform::CGPoint tip{area.minX() + 2, area.midY()};
  canvas.line(tip, {tip.x + kReach, tip.y - kReach}, colors::kBlue, 2);
  canvas.line(tip, {tip.x + kReach, tip.y + kReach}, colors::kBlue, 2);
}

// --- ItemBar

ItemBar::ItemBar(platform::Class cls) : View(cls) {
  setBackgroundColor(colors::kBackground);
}

std::shared_ptr<BarItem> ItemBar::addItem(std::string title, Control::Action action) {
  const bool isTabBar = isKindOfClass(platform::uikit::UITabBar);
  auto item =
      std::make_shared<BarItem>(std::move(title), isTabBar ? platform::uikit::UITabBarItem
                                                           : platform::uikit::UIBarButtonItem);
  item->onTap(std::move(action));
  addSubview(item);
  layoutSubviews();
  return item;
}

void ItemBar::layoutSubviews() {
  if (subviews().empty()) return;
  const platform::CGSize size = bounds().size;
  const double width = size.width / static_cast<double>(subviews().size());
  for (std::size_t index = 0; index < subviews().size(); ++index) {
    child(index).setFrame({{width * static_cast<double>(index), 0}, {width, size.height}});
  }
}

void ItemBar::drawContent(Canvas& canvas) const {
  drawEdge(canvas, bounds(), bounds().minY());
}

}  // namespace tarni::headless
