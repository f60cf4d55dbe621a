#include "backends/headless/events/InputDevices.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "backends/headless/Application.h"
#include "backends/headless/events/Finger.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/TextView.h"
#include "platform/Foundation/Characters.h"
#include "platform/Foundation/NSException.h"
#include "platform/Platform.h"

namespace tarni::headless {
namespace {

using platform::isInsideCharacter;
using platform::NSException;
using platform::UITouchPhase;

constexpr double kPointsPerNotch = 40;

constexpr std::array<std::string_view, 21> kKeysWithoutText{
    "Alt",   "AltGraph", "ArrowDown",   "ArrowLeft", "ArrowRight", "ArrowUp", "CapsLock",
    "Clear", "Control",  "ContextMenu", "Delete",    "End",        "Enter",   "Escape",
    "Help",  "Home",     "Insert",      "Meta",      "PageDown",   "PageUp",  "Tab"};

bool isFunctionKey(std::string_view key) {
  const auto isDigit = [](char digit) { return digit >= '0' && digit <= '9'; };
  return (key.size() == 2 || key.size() == 3) && key.front() == 'F' && key[1] != '0' &&
         std::ranges::all_of(key.substr(1), isDigit);
}

bool isCharacter(std::string_view key) {
  return !key.empty() && !isInsideCharacter(key.front()) &&
         static_cast<unsigned char>(key.front()) >= ' ' &&
         std::ranges::all_of(key.substr(1), isInsideCharacter);
}

bool isNamed(std::string_view key) {
  return key == "Shift" || key == "Backspace" || isFunctionKey(key) ||
         std::ranges::find(kKeysWithoutText, key) != kKeysWithoutText.end();
}

std::string withoutLastCharacter(std::string text) {
  while (!text.empty() && isInsideCharacter(text.back())) text.pop_back();
  if (!text.empty()) text.pop_back();
  return text;
}

void clear(View* view) {
  if (auto* const field = dynamic_cast<TextField*>(view)) {
    field->replaceText("");
    field->sendActions(ControlEvent::EditingChanged);
  }
  if (auto* const editor = dynamic_cast<TextView*>(view)) editor->setText("");
}

bool takesText(View* view) {
  return dynamic_cast<TextField*>(view) || dynamic_cast<TextView*>(view);
}

void typeInto(View* view, const std::string& text) {
  if (auto* const field = dynamic_cast<TextField*>(view)) field->type(text);
  if (auto* const editor = dynamic_cast<TextView*>(view)) editor->type(text);
}

void takeCharacterFrom(View* view) {
  if (auto* const field = dynamic_cast<TextField*>(view)) {
    field->replaceText(withoutLastCharacter(field->text()));
    field->sendActions(ControlEvent::EditingChanged);
  }
  if (auto* const editor = dynamic_cast<TextView*>(view)) {
    editor->setText(withoutLastCharacter(*editor->textViewText()));
  }
}

}  // namespace

platform::Task<void> InputDevices::movePointer(platform::UIWindowRef window,
                                               platform::CGPoint point) {
  if (touch_) {
    touch_->_setLocationInWindow(convertPoint(point, window, touch_->window()), false);
    co_await sendTouch(UITouchPhase::Moved);
  } else {
    window_ = window;
    point_ = point;
  }
}

platform::Task<void> InputDevices::setButton(platform::PointerButton button, bool isDown) {
  if (button != platform::PointerButton::Left) {
    throw NSException(platform::NSInvalidArgumentException,
                      "The pointer of this platform has one button, the left one");
  }
  const platform::UIWindowRef window = window_.lock();
  if (isDown == (touch_ != nullptr) || (isDown && !window)) co_return;
  if (!isDown) {
    co_await sendTouch(UITouchPhase::Ended);
    co_return;
  }
  selected_.reset();
  touch_ = application_.makeTouch();
  touch_->setWindow(window);
  touch_->setTapCount(1);
  touch_->_setLocationInWindow(point_, true);
  touch_->setView(window->hitTest(point_));
  touch_->_setIsFirstTouchForView(true);
  co_await sendTouch(UITouchPhase::Began);
}

platform::Task<void> InputDevices::turnWheel(double right, double down) {
  const platform::UIWindowRef window = window_.lock();
  platform::UIViewRef view = window ? window->hitTest(point_) : nullptr;
  if (window && isPersons()) {
    platform::InputEvent event{platform::InputKind::Wheel, uptime()};
    event.window = window;
    event.view = view;
    event.point = point_;
    event.notches = {right, down};
    application_.showInput(event);
  }
  while (view && !dynamic_cast<ScrollView*>(view.get())) view = view->superview();
  if (const auto scrolled = std::dynamic_pointer_cast<ScrollView>(view)) {
    scrolled->scrollBy({right * kPointsPerNotch, down * kPointsPerNotch});
  }
  co_return;
}

platform::Task<void> InputDevices::setKey(std::string key, bool isDown) {
  if (!isNamed(key) && !isCharacter(key)) {
    throw NSException(platform::NSInvalidArgumentException, "There is no key \"" + key + "\"");
  }
  if (key == "Shift") isShiftDown_ = isDown;
  if (key == "Control" || key == "Alt" || key == "Meta") {
    isDown ? void(chord_.insert(key)) : void(chord_.erase(key));
  }
  const bool isText = isCharacter(key) && chord_.empty();
  const std::string text = !isText ? "" : isShiftDown_ ? platform::withShift(key) : key;
  const platform::InputKind kind =
      isDown ? platform::InputKind::KeyDown : platform::InputKind::KeyUp;
  showKeys(kind, isText ? text : key, text);
  if (!isDown) co_return;
  View* const typedInto = focused();
  if (key == "a" && chord_.contains("Control") && typedInto) selected_ = typedInto->ref();
  const bool changes = key == "Backspace" || key == "Delete" || isCharacter(key);
  const bool wasSelected = chord_.empty() && changes && takeSelection();
  if (key == "Backspace" && !wasSelected) takeCharacterFrom(typedInto);
  if (key == "Enter" && dynamic_cast<TextView*>(typedInto)) typeInto(typedInto, "\n");
  if (isText) typeInto(typedInto, text);
}

platform::Task<void> InputDevices::commitText(std::string text) {
  View* const typedInto = focused();
  if (!typedInto) throw NSException(platform::NSGenericException, "Nothing has the focus");
  if (!takesText(typedInto)) {
    throw NSException(platform::kTakesNoTextException, "What has the focus takes no text");
  }
  showKeys(platform::InputKind::Text, "", text);
  takeSelection();
  typeInto(typedInto, text);
  co_return;
}

bool InputDevices::takeSelection() {
  const auto selected = std::exchange(selected_, {}).lock();
  if (!selected || selected.get() != focused()) return false;
  clear(selected.get());
  return true;
}

platform::Task<void> InputDevices::sendTouch(UITouchPhase phase) {
  const platform::UITouchRef touch = touch_;
  if (phase == UITouchPhase::Ended) {
    window_ = touch->window();
    point_ = touch->locationInView(nullptr);
    touch_ = nullptr;
  }
  touch->setPhase(phase);
  touch->setTimestamp(uptime());
  if (isPersons()) application_.showInput(inputOf(touch, phase));
  posix::EventRecord event{platform::UIEventType::Touches};
  event._addTouch(touch, false);
  event._setTimestamp(touch->timestamp());
  co_await application_.handleUnseen(event);
}

void InputDevices::showKeys(platform::InputKind kind, const std::string& key,
                            const std::string& text) const {
  constexpr std::pair<std::string_view, unsigned> kModifiers[] = {
      {"Control", platform::kControl}, {"Alt", platform::kAlt}, {"Meta", platform::kMeta}};
  if (!isPersons()) return;
  View* const typedInto = focused();
  platform::InputEvent event{kind, uptime()};
  event.window = application_.keyWindow();
  event.view = typedInto ? typedInto->ref() : nullptr;
  event.key = key;
  event.text = text;
  event.takesText = takesText(typedInto);
  if (isShiftDown_) event.modifiers |= platform::kShift;
  for (const auto& [name, bit] : kModifiers) {
    if (chord_.contains(std::string(name))) event.modifiers |= bit;
  }
  application_.showInput(event);
}

double InputDevices::uptime() {
  return platform::current().processInfo->systemUptime();
}

View* InputDevices::focused() const {
  const auto window = std::dynamic_pointer_cast<Window>(application_.keyWindow());
  return window ? window->firstResponder() : nullptr;
}

}  // namespace tarni::headless
