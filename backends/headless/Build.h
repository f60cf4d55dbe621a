// build<Kind>(): a view with all that belongs to it in one expression.
//
//   auto login = build<Button>("Log in")
//                    .frame({{20, 300}, {350, 44}})
//                    .identifier("login")
//                    .with(&Button::onTap, [] { … })
//                    .in(*window);
//
// Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "backends/headless/View.h"

namespace tarni::headless {

template <typename Kind>
class Building {
 public:
  explicit Building(std::shared_ptr<Kind> view) : view_(std::move(view)) {}

  Building& frame(const platform::CGRect& frame) { return with(&View::setFrame, frame); }
  // A class of that name below the class of the kind.
  Building& className(std::string_view name) { return with(&View::setClassName, name); }
  Building& identifier(std::string text) {
    return with(&View::setAccessibilityIdentifier, std::move(text));
  }
  Building& label(std::string text) { return with(&View::setAccessibilityLabel, std::move(text)); }
  Building& tag(long tag) { return with(&View::setTag, tag); }
  Building& hidden() { return with(&View::setHidden, true); }
  Building& clips() { return with(&View::setClipsToBounds, true); }
  Building& background(platform::CGColor color) { return with(&View::setBackgroundColor, color); }

  // Calls any operation of the kind.
  template <typename Operation, typename... Arguments>
  Building& with(Operation operation, Arguments&&... arguments) {
    std::invoke(operation, *view_, std::forward<Arguments>(arguments)...);
    return *this;
  }
  // Adds subviews, the last one in front.
  template <typename... Views>
  Building& add(const Views&... views) {
    (view_->addSubview(views), ...);
    return *this;
  }

  // Adds the view to its superview and gives it out.
  std::shared_ptr<Kind> in(View& superview) {
    superview.addSubview(view_);
    return view_;
  }
  std::shared_ptr<Kind> get() const { return view_; }

 private:
  std::shared_ptr<Kind> view_;
};

// The arguments are those of the kind's constructor.
template <typename Kind, typename... Arguments>
Building<Kind> build(Arguments&&... arguments) {
  return Building<Kind>(std::make_shared<Kind>(std::forward<Arguments>(arguments)...));
}

}  // namespace tarni::headless
