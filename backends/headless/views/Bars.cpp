#include "backends/headless/views/Bars.h"

#include "backends/headless/drawing/Canvas.h"

namespace tarni::headless {
namespace {

constexpr double kSide = 108;  // points beside the title, as buttons take them

platform::Class navigationItemViewClass() {
  return platform::defineClass("UINavigationItemView", platform::uikit::UIView);
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

void NavigationBar::layoutSubviews() {
  const platform::CGSize middle{bounds().size.width - 2 * kSide, bounds().size.height};
  itemView_->setFrame({{kSide, 0}, middle});
  titleLabel_->setFrame({{0, 0}, middle});
}

bool NavigationBar::handleTouch(platform::UITouchPhase, platform::UITouch&) {
  return true;
}

void NavigationBar::drawContent(Canvas& canvas) const {
  drawEdge(canvas, bounds(), bounds().maxY());
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
