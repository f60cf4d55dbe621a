#include <algorithm>

#include "agent/session/methods/Handlers.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Elements.h"
#include "agent/session/screen/Pictures.h"
#include "platform/Platform.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session::window {

using platform::Task;
using platform::UIWindowRef;

namespace {

UIWindowRef windowOf(const Json& parameters) {
  if (!parameters.contains("window")) {
    const UIWindowRef key = platform::current().application->keyWindow();
    if (key) return key;
    throw SessionError(errors::kNoSuchWindow, "the program shows no window");
  }
  return Elements::sharedInstance().viewOf(parameters["window"].get<Handle>())->window();
}

// Throws where windows of the platform are not to be changed.
std::shared_ptr<platform::UIWindow> changeable(const UIWindowRef& window) {
  auto own = platform::as<platform::UIWindow>(window);
  if (!own) {
    throw SessionError(errors::kUnsupported, "windows of this platform cannot be changed");
  }
  return own;
}

}  // namespace

Answer list(CallRef) {
  platform::UIApplication& application = *platform::current().application;
  const UIWindowRef key = application.keyWindow();
  const std::vector<UIWindowRef> reached = application.windowsThatTakeInput();
  JsonText text;
  text.open('[');
  for (const UIWindowRef& window : shownWindows()) {
    text.open('{');
    describe(window, Elements::sharedInstance().handleOf(window), placeOf(window), text);
    text.add("screenRect", window->frame());
    text.add("key", window == key);
    text.add("takesInput", std::ranges::find(reached, window) != reached.end());
    text.close('}');
  }
  text.close(']');
  Result result;
  result.written.emplace_back("windows", text.take());
  co_return result;
}

Answer activate(CallRef call) {
  UIWindowRef window = windowOf(call->parameters());
  co_await platform::current().application->makeKeyWindow(window);
  co_return Result();
}

Answer resize(CallRef call) {
  const UIWindowRef window = windowOf(call->parameters());
  const platform::CGSize size{call->parameters()["width"].get<double>(),
                              call->parameters()["height"].get<double>()};
  if (size.width < 1 || size.height < 1) {
    throw SessionError(errors::kInvalidArgument, "a window is at least 1 by 1 points");
  }
  const auto own = changeable(window);
  co_await own->resize(size);
  co_return Result(
      Json{{"width", window->bounds().size.width}, {"height", window->bounds().size.height}});
}

Answer close(CallRef call) {
  const auto own = changeable(windowOf(call->parameters()));
  co_await own->close();
  co_return Result();
}

Answer picture(CallRef call) {
  UIWindowRef window = windowOf(call->parameters());
  const bool hidesSecrets = call->parameters().value("blurSecrets", false);
  platform::UIImageRef image;
  if (hidesSecrets) {
    image = co_await drawWithoutSecrets(window);
  } else {
    image = co_await draw(window);
  }
  Result result;
  result.finish = [image](Json& value) { value = encoded(image); };
  co_return result;
}

}  // namespace tarni::session::window
