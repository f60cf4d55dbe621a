// Bars: navigation bars, tool bars and tab bars with the private views that UIKit puts into them.
// Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "backends/headless/views/Button.h"

namespace tarni::headless {

// A UINavigationItem, UIBarButtonItem or UITabBarItem, presented as the view that shows it.
class BarItem : public Control, public platform::UITitledItem {
 public:
  explicit BarItem(std::optional<std::string> title,
                   platform::Class cls = platform::uikit::UIBarButtonItem);

  std::optional<std::string> title() const override { return title_; }
  void setTitle(std::optional<std::string> title) { setContent(title_, std::move(title)); }

  void drawContent(Canvas& canvas) const override;

 private:
  std::optional<std::string> title_;
};

// A UINavigationBar: the title in a UINavigationItemView, buttons of the class UINavigationButton,
// and a _UINavigationBarBackIndicatorView beside the one that goes back. The bar itself takes the
// touches that hit its title and its back indicator.
class NavigationBar : public View {
 public:
  explicit NavigationBar(std::string title);

  void setTitle(std::string title);
  std::string title() const;
  const ViewRef& itemView() const { return itemView_; }
  // On the left side, with the back indicator.
  std::shared_ptr<Button> setBackButton(std::string title, Control::Action action);
  // On the right side.
  std::shared_ptr<Button> setRightButton(std::string title, Control::Action action);
  // Null while there is no back button.
  const ViewRef& backIndicator() const { return backIndicator_; }

  bool handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) override;
  void drawContent(Canvas& canvas) const override;

 protected:
  void layoutSubviews() override;

 private:
  void replace(std::shared_ptr<Button>& button, std::string title, Control::Action action);

  ViewRef itemView_;
  std::shared_ptr<Label> titleLabel_;
  ViewRef backIndicator_;
  std::shared_ptr<Button> backButton_;
  std::shared_ptr<Button> rightButton_;
};

// A UIToolbar or UITabBar; its items stand side by side in equal widths.
class ItemBar : public View {
 public:
  explicit ItemBar(platform::Class cls = platform::uikit::UIToolbar);

  // The item is of the class that belongs to the bar.
  std::shared_ptr<BarItem> addItem(std::string title, Control::Action action);

  void drawContent(Canvas& canvas) const override;

 protected:
  void layoutSubviews() override;
};

}  // namespace tarni::headless
