#include "backends/headless/views/Window.h"

#include "backends/headless/Application.h"
#include "backends/headless/drawing/TextStyle.h"
#include "backends/headless/views/ViewController.h"

namespace tarni::headless {

Window::Window(const platform::CGRect& frame) : View(platform::uikit::UIWindow) {
  window_ = this;
  setOpaque(true);
  setBackgroundColor(colors::kWhite);
  setFrame(frame);
}

// While the views below can still ask their window.
Window::~Window() {
  removeAllSubviews();
}

platform::Task<void> Window::resize(platform::CGSize size) {
  setFrame({frame().origin, size});
  if (rootViewController_ && !subviews().empty()) child(0).setFrame({{0, 0}, size});
  co_return;
}

platform::Task<void> Window::close() {
  setHidden(true);
  if (application_) application_->removeWindow(std::static_pointer_cast<Window>(ref()));
  co_return;
}

void Window::makeKeyAndVisible(Application& application) {
  application_ = &application;
  setHidden(false);
  const auto self = std::static_pointer_cast<Window>(ref());
  application.addWindow(self);
  application.setKeyWindow(self);
}

void Window::setRootViewController(const std::shared_ptr<ViewController>& controller) {
  removeAllSubviews();
  rootViewController_ = controller;
  if (controller) controller->presentIn(*this);
}

}  // namespace tarni::headless
