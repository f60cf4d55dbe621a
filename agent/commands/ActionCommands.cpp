#include <algorithm>
#include <nlohmann/json.hpp>

#include "agent/commands/NativeCommands.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIView_Highlight.h"
#include "agent/interaction/PlayBackInteractionMethods.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "platform/Foundation/Lowercase.h"
#include "platform/Platform.h"

namespace tarni::commands {

using nlohmann::ordered_json;
using platform::CGPoint;
using platform::CGSize;
using platform::Task;
using platform::UIViewRef;
using platform::UIViewWeakRef;

namespace {

constexpr double kAfterActionSeconds = 0.5;
constexpr float kSwipeAmount = 200.0F;

using Action = Task<bool> (*)(UIViewRef view, FunctionCallObject command);

Task<bool> click(UIViewRef view, FunctionCallObject) {
  PlayBackInteractionMethods interaction;
  co_return co_await interaction.performClickOnUIView(view);
}

Task<bool> typeText(UIViewRef view, FunctionCallObject command) {
  PlayBackInteractionMethods interaction;
  co_return co_await interaction.performTypeTextOnUIView(view, command.getDataValue());
}

// A person who acts on something in another window touches that window.
Task<void> makeWindowKey(UIViewWeakRef weakElement) {
  platform::UIApplication& application = *platform::current().application;
  platform::UIWindowRef window;
  if (const UIViewRef element = weakElement.lock()) window = element->window();
  if (!window || window == application.keyWindow()) co_return;
  const std::vector<platform::UIWindowRef> reached = application.windowsThatTakeInput();
  if (std::ranges::find(reached, window) == reached.end()) co_return;
  co_await application.makeKeyWindow(std::move(window));
}

// Shows the element while the action runs and for a moment after. The action may close the
// element's window, so nothing here keeps the element over a wait.
Task<void> actOnElement(FunctionCallObject command, Action action) {
  const platform::Platform& platform = platform::current();
  UIViewWeakRef sought = elementOf(command);
  co_await makeWindowKey(std::move(sought));
  UIViewRef element = elementOf(command);
  if (!element) co_return;
  const UIViewWeakRef weakElement = element;
  const Highlight::Border kept = Highlight::ownBorder(element);
  Highlight::highlightView(element);
  platform.transaction->flush();
  co_await action(std::move(element), command);
  co_await platform.application->runLoopRunInMode(platform::kCFRunLoopDefaultMode,
                                                  kAfterActionSeconds, false);
  if (const UIViewRef still = weakElement.lock()) {
    Highlight::deHighlightView(still, kept.width, kept.color);
  }
  platform.transaction->flush();
}

// Every view of the window, none of them kept.
std::vector<UIViewWeakRef> allViews() {
  const std::vector<UIViewRef> views = UIViewFinder::getAllUIViewsAccordingToViewType("");
  return {views.begin(), views.end()};
}

struct Drag {
  CGPoint from;
  CGPoint to;
};

// Over the middle half of the size; nowhere for an unknown direction.
Drag dragInDirection(const std::string& direction, CGSize size) {
  const CGPoint left{size.width / 4, size.height / 2};
  const CGPoint right{size.width - size.width / 4, size.height / 2};
  const CGPoint top{size.width / 2, size.height / 4};
  const CGPoint bottom{size.width / 2, size.height - size.height / 4};
  if (direction == "left") return {right, left};
  if (direction == "right") return {left, right};
  if (direction == "up") return {bottom, top};
  if (direction == "down") return {top, bottom};
  return {};
}

UIViewRef firstSubviewOfWindow() {
  const platform::UIWindowRef window = UIViewFinder::getCurrentWindow();
  if (!window || window->subviews().empty()) return nullptr;
  return window->subviews().front();
}

}  // namespace

Entries clickelement(FunctionCallObject command) {
  co_await actOnElement(std::move(command), click);
  co_return ordered_json::array();
}

Entries sendkeysonelement(FunctionCallObject command) {
  co_await actOnElement(std::move(command), typeText);
  co_return ordered_json::array();
}

Entries swipeto(FunctionCallObject) {
  const std::vector<UIViewWeakRef> views = allViews();
  for (const UIViewWeakRef& view : views) {
    UIViewRef alive = view.lock();
    if (alive) co_await UIViewFinder::swipeBy(kSwipeAmount, std::move(alive));
  }
  co_return ordered_json::array();
}

Entries swipereset(FunctionCallObject) {
  const std::vector<UIViewWeakRef> views = allViews();
  for (const UIViewWeakRef& view : views) {
    UIViewRef alive = view.lock();
    if (alive) co_await UIViewFinder::swipeReset(-kSwipeAmount, std::move(alive));
  }
  co_return ordered_json::array();
}

Entries swipeon(FunctionCallObject command) {
  UIViewWeakRef sought = elementOf(command);
  co_await makeWindowKey(std::move(sought));
  // Without an element, what fills the window.
  UIViewRef target =
      command.getAccessorValue().empty() ? firstSubviewOfWindow() : elementOf(command);
  if (!target) co_return ordered_json::array();
  const std::string direction = platform::lowercaseString(command.getDataValue());
  const Drag drag = dragInDirection(direction, target->bounds().size);
  co_await KIFAdditions::dragFromPoint(std::move(target), drag.from, drag.to);
  co_return ordered_json::array();
}

Entries highlight(FunctionCallObject command) {
  if (const UIViewRef element = elementOf(command)) Highlight::highlightView(element);
  co_return ordered_json::array();
}

}  // namespace tarni::commands
