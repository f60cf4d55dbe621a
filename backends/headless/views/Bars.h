// Bars: navigation bars, tool bars and tab bars with the private views that UIKit puts into them.
// Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "backends/headless/views/Control.h"
#include "backends/headless/views/Label.h"

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

// A UINavigationBar with its title in a UINavigationItemView. The bar itself takes the touches that
// hit the title.
class NavigationBar : public View {
 public:
  explicit NavigationBar(std::string title);

  void setTitle(std::string title);
  std::string title() const;
  const ViewRef& itemView() const { return itemView_; }

  bool handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) override;
  void drawContent(Canvas& canvas) const override;

 protected:
  void layoutSubviews() override;

 private:
  ViewRef itemView_;
  std::shared_ptr<Label> titleLabel_;
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
