#include "backends/headless/views/ViewController.h"

#include "backends/headless/views/Window.h"
#include "platform/Platform.h"

namespace tarni::headless {
namespace {

constexpr const char* kViewWillAppear = "viewWillAppear:";
constexpr const char* kViewDidAppear = "viewDidAppear:";

void perform(const char* selector, bool animated) {
  platform::current().runtime->perform(platform::uikit::UIViewController, selector, {animated});
}

}  // namespace

ViewController::ViewController(ViewRef view) : view_(std::move(view)) {}

void ViewController::defineMethods(platform::ObjectiveCRuntime& runtime) {
  const auto nothing = [](const std::vector<platform::Argument>&) {};
  runtime.class_replaceMethod(platform::uikit::UIViewController, kViewWillAppear, nothing, "v@:B");
  runtime.class_replaceMethod(platform::uikit::UIViewController, kViewDidAppear, nothing, "v@:B");
}

void ViewController::presentIn(Window& window, bool animated) {
  const auto alive = shared_from_this();
  view_->setFrame({{}, window.bounds().size});
  perform(kViewWillAppear, animated);
  window.addSubview(view_);
  perform(kViewDidAppear, animated);
}

void ViewController::dismiss() {
  view_->removeFromSuperview();
}

}  // namespace tarni::headless
