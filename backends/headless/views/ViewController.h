// ViewController: a screen of the application. Showing one sends "viewWillAppear:" and
// "viewDidAppear:" through the runtime, so that exchanged implementations see it. Main thread.
#pragma once

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

  // In front of everything in the window, in the window's size.
  void presentIn(Window& window, bool animated = false);
  void dismiss();

  // Adds the methods to the class UIViewController.
  static void defineMethods(platform::ObjectiveCRuntime& runtime);

 private:
  ViewRef view_;
};

}  // namespace tarni::headless
