// What a window has that other views do not. A backend's view of the kind UIWindow derives from
// UIView and from this; `as<UIWindow>(view)` asks for it. Where views become windows and cease to
// be, others derive from it as well, so that their class says what they are at the moment; they
// answer with nothing and do nothing. Null texts are nil. Main thread only.
#pragma once

#include <optional>
#include <string>

#include "platform/UIKit/UIView.h"

namespace tarni::platform {

class UIWindow {
 public:
  virtual ~UIWindow() = default;
  virtual std::optional<std::string> windowTitle() const = 0;
  // True for one that keeps the user from others until it is closed.
  virtual bool isModal() const = 0;
  // True for a menu or the list of a combo box.
  virtual bool isPopup() const = 0;
  // In points. A window manager may have another opinion; the frame tells what came of it.
  virtual Task<void> resize(CGSize size) = 0;
  // As a person closes it, so that the application may ask back or refuse.
  virtual Task<void> close() = 0;
};

}  // namespace tarni::platform
