// What the kinds of views add to UIView. A backend's view derives from UIView and from the
// interfaces of its kind; `as<UIButton>(view)` asks for one. Null texts are nil.
//
// Whatever makes the application run code of its own is awaitable: it may open a dialog in there.
// Main thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/UIKit/UIView.h"

namespace tarni::platform {

inline constexpr std::uint32_t UIControlEventEditingChanged = 1U << 17;

class UIControl {
 public:
  virtual ~UIControl() = default;
  // Runs the application's targets of these control events.
  virtual Task<void> sendActionsForControlEvents(std::uint32_t events) = 0;
};

class UILabel {
 public:
  virtual ~UILabel() = default;
  virtual std::optional<std::string> labelText() const = 0;
};

class UIButton {
 public:
  virtual ~UIButton() = default;
  virtual std::optional<std::string> currentTitle() const = 0;
};

class UITextField {
 public:
  virtual ~UITextField() = default;
  virtual std::optional<std::string> placeholder() const = 0;
  // The typed text; empty when nothing was typed.
  virtual std::string text() const = 0;
  virtual Task<void> setText(std::string text) = 0;
  // True for one that shows dots or nothing instead of the text.
  virtual bool isSecureTextEntry() const = 0;
};

class UITextView {
 public:
  virtual ~UITextView() = default;
  virtual std::optional<std::string> textViewText() const = 0;
};

class UITableViewCell {
 public:
  virtual ~UITableViewCell() = default;
  virtual std::optional<std::string> cellText() const = 0;
};

// UINavigationItem, UIBarButtonItem and UITabBarItem, where a platform presents them as views.
class UITitledItem {
 public:
  virtual ~UITitledItem() = default;
  virtual std::optional<std::string> title() const = 0;
};

class UISwitch {
 public:
  virtual ~UISwitch() = default;
  virtual bool isOn() const = 0;
  // As the platform does it when a program asks: no value-changed action where the home platform
  // sends none, and a click on Qt, whose programs listen to that.
  virtual Task<void> setOn(bool on) = 0;
};

class UISegmentedControl {
 public:
  virtual ~UISegmentedControl() = default;
  virtual long numberOfSegments() const = 0;
  // -1 when none is selected.
  virtual long selectedSegmentIndex() const = 0;
  // Throws NSException (range) for an index that does not exist.
  virtual std::optional<std::string> titleForSegmentAtIndex(long index) const = 0;
};

class UIScrollView {
 public:
  virtual ~UIScrollView() = default;
  virtual CGPoint contentOffset() const = 0;
  virtual Task<void> setContentOffset(CGPoint offset, bool animated) = 0;
};

class UIWebView {
 public:
  virtual ~UIWebView() = default;
  virtual bool isLoading() const = 0;
  // True for a page that has stopped answering, or has gone: nothing more is asked of it.
  virtual bool isSilent() const { return false; }
  // Whether what fingers and the pointer do on it comes to the page.
  virtual bool passesPresses() const { return true; }
  // The result as text, empty when there is none and for a page that is or becomes silent. Throws
  // NSException when the page goes meanwhile.
  virtual Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) = 0;
};

// The private view inside a web view that takes taps by itself.
class UIWebBrowserView {
 public:
  virtual ~UIWebBrowserView() = default;
  virtual Task<void> tapInteractionWithLocation(CGPoint point) = 0;
  // performSelector:withObject: of the same selector with the point in a value object. Where views
  // are not objects of a runtime it is the same tap.
  virtual Task<void> performTapInteractionWithLocation(CGPoint boxed) {
    return tapInteractionWithLocation(boxed);
  }
};

}  // namespace tarni::platform
