#include "agent/session/input/TouchDevices.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "agent/session/input/Keys.h"
#include "agent/session/protocol/SessionError.h"
#include "agent/session/screen/Selector.h"
#include "platform/Foundation/Characters.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIKeyInput.h"

namespace tarni::session {

using platform::Task;

namespace {

// A finger that no client has down.
constexpr long kPointersFinger = -1;

[[noreturn]] void sayLacking(const std::string& why) {
  throw SessionError(errors::kUnsupported, why);
}

bool isModifier(const std::string& key) {
  return key == "Shift" || key == "Control" || key == "Alt" || key == "Meta";
}

// Of one code point, not the name of a key.
bool isCharacter(const std::string& key) {
  return std::ranges::count_if(key, std::not_fn(platform::isInsideCharacter)) == 1;
}

struct Focused {
  platform::UIViewRef view;  // holds the next
  platform::UIKeyInput* input;
};

Focused focused() {
  std::vector<platform::UIViewRef> pages;
  Criteria criteria;
  criteria.focused = true;
  const auto found = Selector(criteria).find(1, &pages);
  if (found.empty()) {
    throw SessionError(errors::kNotInteractable,
                       "nothing has the focus: give it to an element first");
  }
  const platform::UIViewRef& view = found.front().view;
  auto* const input = dynamic_cast<platform::UIKeyInput*>(view.get());
  if (!input || !input->takesKeys()) sayLacking("a " + view->getClass()->name() + " takes no keys");
  return {view, input};
}

}  // namespace

Task<void> TouchDevices::movePointer(platform::UIWindowRef window, platform::CGPoint point) {
  spot_ = {std::move(window), point};
  if (!isFingerDown_) co_return;
  Fingers::Spots spots;
  spots[kPointersFinger] = spot_;
  co_await fingers_.move(std::move(spots));
}

Task<void> TouchDevices::setButton(platform::PointerButton button, bool isDown) {
  if (button != platform::PointerButton::Left) {
    sayLacking("this platform has fingers and no mouse: there is no " +
               std::string(nameOf(button)) + " button");
  }
  if (isDown == isFingerDown_ || (isDown && !spot_.window)) co_return;
  isFingerDown_ = isDown;
  if (isDown) {
    Fingers::Spots spots;
    spots[kPointersFinger] = spot_;
    co_await fingers_.down(std::move(spots));
  } else {
    const std::vector<long> numbers(1, kPointersFinger);
    co_await fingers_.up(numbers);
  }
}

Task<void> TouchDevices::turnWheel(double, double) {
  sayLacking("this platform has fingers and no wheel: drag what is to scroll");
}

Task<void> TouchDevices::setKey(std::string key, bool isDown) {
  if (isModifier(key)) {
    isDown ? void(modifiers_.insert(key)) : void(modifiers_.erase(key));
    co_return;
  }
  if (!isDown) co_return;
  const bool isShifted = modifiers_.contains("Shift");
  const bool isPlain = modifiers_.size() == (isShifted ? 1U : 0U);
  const bool isShortcut = modifiers_.contains("Control") || modifiers_.contains("Meta");
  const Focused taker = focused();
  if (isShortcut && key == "a") {
    co_await taker.input->selectAll();
  } else if (isPlain && key == "Backspace") {
    co_await taker.input->deleteBackward();
  } else if (isPlain && key == "Enter") {
    co_await taker.input->insertReturn();
  } else if (isPlain && isCharacter(key)) {
    std::string text = isShifted ? platform::withShift(std::move(key)) : std::move(key);
    co_await taker.input->insertText(std::move(text));
  } else {
    sayLacking("the keyboard on the screen has no \"" + key +
               "\": it has characters, Backspace and Enter, and Control+a");
  }
}

Task<void> TouchDevices::commitText(std::string text) {
  const Focused taker = focused();
  co_await taker.input->insertText(std::move(text));
}

}  // namespace tarni::session
