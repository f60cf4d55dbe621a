// ViewController: a screen of the application. Showing one sends "viewWillAppear:" and
// "viewDidAppear:" through the runtime, so that exchanged implementations see it. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "backends/headless/View.h"
#include "platform/ObjectiveC/Runtime.h"

namespace tarni::headless {

class Window;

class ViewController : public std::enable_shared_from_this<ViewController> {
 public:
  explicit ViewController(ViewRef view);

  const ViewRef& view() const { return view_; }
  // What the application does at these moments; may be empty.
  void onWillAppear(std::function<void()> action) { willAppear_ = std::move(action); }
  void onDidAppear(std::function<void()> action) { didAppear_ = std::move(action); }

  // In front of everything in the window, in the window's size.
  void presentIn(Window& window, bool animated = false);
  void dismiss();

  // Adds the methods to the class UIViewController.
  static void defineMethods(platform::ObjectiveCRuntime& runtime);

 private:
  void perform(std::string_view selector, const std::function<void()>& action, bool animated);

  ViewRef view_;
  std::function<void()> willAppear_;
  std::function<void()> didAppear_;
};

}  // namespace tarni::headless
