// Mortal<Kind>: a view that goes at a call that the test chooses, as a view does whose object the
// application has destroyed: from that call on it answers as an empty, hidden view without window,
// superview and subviews, and it leaves the tree as soon as the application runs. Main thread.
#pragma once

#include <utility>

#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/Window.h"

namespace tarni::test {

// Counts the calls and says from which one on the view has gone.
class Fuse {
 public:
  // It goes with the call number `calls` from now; 0 is never.
  void light(long calls) {
    left_ = calls;
    hasBurnt_ = false;
  }
  void putOut() { left_ = 0; }
  bool hasBurnt() const { return hasBurnt_; }

  // While one lives the backend is at work, whose own calls are not the agent's.
  struct InsideBackend {
    InsideBackend() { ++depth_; }
    ~InsideBackend() { --depth_; }
    InsideBackend(const InsideBackend&) = delete;
    InsideBackend& operator=(const InsideBackend&) = delete;
  };

  // Counts a call; true when the view has gone.
  bool burn() {
    if (depth_ == 0 && left_ > 0 && --left_ == 0) hasBurnt_ = true;
    return hasBurnt_;
  }

 private:
  inline static int depth_ = 0;
  long left_ = 0;
  bool hasBurnt_ = false;
};

// What the kind answers, or as good as nothing.
#define UNLESS_GONE(Kind, Type, question) \
  Type question() const override { return fuse_.burn() ? Type() : Kind::question(); }

template <typename Kind>
class Mortal : public Kind {
 public:
  using CGPoint = platform::CGPoint;
  using CGRect = platform::CGRect;
  using Text = std::optional<std::string>;

  template <typename... Arguments>
  explicit Mortal(Fuse& fuse, Arguments&&... arguments)
      : Kind(std::forward<Arguments>(arguments)...), fuse_(fuse) {}

  UNLESS_GONE(Kind, platform::UIViewRef, superview)
  UNLESS_GONE(Kind, std::span<const platform::UIViewRef>, subviews)
  UNLESS_GONE(Kind, platform::UIWindowRef, window)
  UNLESS_GONE(Kind, CGRect, bounds)
  UNLESS_GONE(Kind, CGRect, frame)
  UNLESS_GONE(Kind, CGPoint, center)
  UNLESS_GONE(Kind, bool, clipsToBounds)
  UNLESS_GONE(Kind, bool, isUserInteractionEnabled)
  UNLESS_GONE(Kind, bool, isFirstResponder)
  UNLESS_GONE(Kind, bool, canBecomeFirstResponder)
  UNLESS_GONE(Kind, std::span<const platform::Class>, gestureRecognizers)
  UNLESS_GONE(Kind, Text, accessibilityIdentifier)
  UNLESS_GONE(Kind, Text, accessibilityValue)
  UNLESS_GONE(Kind, Text, accessibilityLabel)
  bool isHidden() const override { return fuse_.burn() || Kind::isHidden(); }
  CGPoint convertPointToWindow(CGPoint point) const override {
    return fuse_.burn() ? point : Kind::convertPointToWindow(point);
  }
  CGPoint convertPointFromWindow(CGPoint point) const override {
    return fuse_.burn() ? point : Kind::convertPointFromWindow(point);
  }
  platform::UIViewRef hitTest(CGPoint point) const override {
    return fuse_.burn() ? nullptr : Kind::hitTest(point);
  }
  platform::Task<void> becomeFirstResponder() override {
    if (!fuse_.burn()) co_await Kind::becomeFirstResponder();
    leaveIfGone();
  }
  platform::Task<platform::UIImageRef> drawViewHierarchy() override {
    if (fuse_.burn()) co_return nullptr;
    platform::UIImageRef image;
    {
      const Fuse::InsideBackend inside;
      image = co_await Kind::drawViewHierarchy();
    }
    leaveIfGone();
    co_return image;
  }

  // The application runs: what has gone leaves the tree.
  void leaveIfGone() {
    if (fuse_.hasBurnt()) headless::View::removeFromSuperview();
  }

 protected:
  Fuse& fuse_;
};

class MortalButton : public Mortal<headless::Button> {
 public:
  using Mortal::Mortal;
  UNLESS_GONE(Button, Text, currentTitle)
};

class MortalLabel : public Mortal<headless::Label> {
 public:
  using Mortal::Mortal;
  UNLESS_GONE(Label, Text, labelText)
};

class MortalField : public Mortal<headless::TextField> {
 public:
  using Mortal::Mortal;
  UNLESS_GONE(TextField, Text, placeholder)
  UNLESS_GONE(TextField, std::string, text)
  platform::Task<void> setText(std::string text) override {
    if (!fuse_.burn()) co_await TextField::setText(std::move(text));
    leaveIfGone();
  }
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override {
    if (!fuse_.burn()) co_await TextField::sendActionsForControlEvents(events);
    leaveIfGone();
  }
};

class MortalSwitch : public Mortal<headless::Switch> {
 public:
  using Mortal::Mortal;
  UNLESS_GONE(Switch, bool, isOn)
  platform::Task<void> setOn(bool on) override {
    if (!fuse_.burn()) co_await Switch::setOn(on);
    leaveIfGone();
  }
};

class MortalTable : public Mortal<headless::TableView> {
 public:
  using Mortal::Mortal;
  UNLESS_GONE(TableView, CGPoint, contentOffset)
  platform::Task<void> setContentOffset(CGPoint offset, bool animated) override {
    if (!fuse_.burn()) co_await TableView::setContentOffset(offset, animated);
    leaveIfGone();
  }
};

}  // namespace tarni::test
