// Window: a UIWindow. It stands in screen coordinates and holds the first responder of its views.
// It is shown once it is with the Application (makeKeyAndVisible). Main thread.
#pragma once

#include <memory>

#include "backends/headless/View.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::headless {

class Application;
class ViewController;

class Window : public View, public platform::UIWindow {
 public:
  explicit Window(const platform::CGRect& frame);
  ~Window() override;

  // There is no title and no other kind of window here. A closed window is taken off the screen.
  std::optional<std::string> windowTitle() const override { return std::nullopt; }
  bool isModal() const override { return false; }
  bool isPopup() const override { return false; }
  platform::Task<void> resize(platform::CGSize size) override;
  platform::Task<void> close() override;

  // Adds the window to the application's and makes it the one that the user faces.
  void makeKeyAndVisible(Application& application);

  // Null when no view has the focus.
  View* firstResponder() const { return firstResponder_; }

  // Replaces the views of the window by the controller's view, sized like the window, and tells
  // the controller that it will appear and did appear.
  void setRootViewController(const std::shared_ptr<ViewController>& controller);
  const std::shared_ptr<ViewController>& rootViewController() const { return rootViewController_; }

 private:
  friend class View;

  Application* application_ = nullptr;  // that it was shown with
  View* firstResponder_ = nullptr;
  std::shared_ptr<ViewController> rootViewController_;
};

}  // namespace tarni::headless
