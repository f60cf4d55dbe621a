#include "agent/session/input/Keys.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "agent/session/protocol/SessionError.h"
#include "platform/Foundation/Lowercase.h"

namespace tarni::session {

using platform::PointerButton;
using platform::Task;

namespace {

constexpr std::array<std::pair<std::string_view, PointerButton>, 5> kButtons{{
    {"left", PointerButton::Left},
    {"right", PointerButton::Right},
    {"middle", PointerButton::Middle},
    {"back", PointerButton::Back},
    {"forward", PointerButton::Forward},
}};

constexpr std::size_t kMostKeys = 16;

struct OtherName {
  std::string_view name;  // in lower case
  std::string_view key;
};

constexpr OtherName kOtherNames[] = {
    {"alt", "Alt"},
    {"apostrophe", "'"},
    {"asterisk", "*"},
    {"backslash", "\\"},
    {"backspace", "Backspace"},
    {"bracketleft", "["},
    {"bracketright", "]"},
    {"cmd", "Meta"},
    {"colon", ":"},
    {"comma", ","},
    {"command", "Meta"},
    {"control", "Control"},
    {"ctrl", "Control"},
    {"del", "Delete"},
    {"delete", "Delete"},
    {"dot", "."},
    {"down", "ArrowDown"},
    {"end", "End"},
    {"enter", "Enter"},
    {"equal", "="},
    {"esc", "Escape"},
    {"escape", "Escape"},
    {"grave", "`"},
    {"hash", "#"},
    {"home", "Home"},
    {"ins", "Insert"},
    {"insert", "Insert"},
    {"left", "ArrowLeft"},
    {"meta", "Meta"},
    {"minus", "-"},
    {"option", "Alt"},
    {"pagedown", "PageDown"},
    {"pageup", "PageUp"},
    {"period", "."},
    {"pgdn", "PageDown"},
    {"pgup", "PageUp"},
    {"plus", "+"},
    {"quote", "\""},
    {"return", "Enter"},
    {"right", "ArrowRight"},
    {"semicolon", ";"},
    {"shift", "Shift"},
    {"slash", "/"},
    {"space", " "},
    {"super", "Meta"},
    {"tab", "Tab"},
    {"underscore", "_"},
    {"up", "ArrowUp"},
};

}  // namespace

std::string keyNamed(const std::string& name) {
  const auto* const known =
      std::ranges::find(kOtherNames, platform::lowercase(name), &OtherName::name);
  return known == std::end(kOtherNames) ? name : std::string(known->key);
}

PointerButton buttonNamed(const std::string& name) {
  const auto found =
      std::ranges::find(kButtons, name, &std::pair<std::string_view, PointerButton>::first);
  if (found != kButtons.end()) return found->second;
  throw SessionError(errors::kInvalidArgument,
                     "\"" + name + "\" is none of left, right, middle, back and forward");
}

std::string_view nameOf(PointerButton button) {
  return std::ranges::find(kButtons, button, &std::pair<std::string_view, PointerButton>::second)
      ->first;
}

KeyChord::KeyChord(const std::string& text) {
  const char joint = text.find('+') == std::string::npos ? '-' : '+';
  std::size_t begin = 0;
  while (begin < text.size()) {
    // A plus or a minus where a key is due is the key itself.
    const std::size_t end = std::min(text.find(joint, begin + 1), text.size());
    if (keys_.size() == kMostKeys) {
      throw SessionError(errors::kInvalidArgument, "more than 16 keys are down together");
    }
    keys_.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
}

std::string KeyChord::takeLast() {
  if (keys_.empty()) return {};
  std::string last = std::move(keys_.back());
  keys_.pop_back();
  return last;
}

Task<void> KeyChord::press(HeldInput& held, platform::InputDevices& devices) const {
  for (const std::string& key : keys_) co_await held.setKey(key, true, devices);
}

Task<void> KeyChord::release(HeldInput& held, platform::InputDevices& devices) const {
  for (auto key = keys_.rbegin(); key != keys_.rend(); ++key) {
    co_await held.setKey(*key, false, devices);
  }
}

Task<void> pressKeys(HeldInput& held, std::string chord, platform::InputDevices& devices) {
  KeyChord modifiers(chord);
  std::string key = modifiers.takeLast();
  if (key.empty()) co_return;
  co_await modifiers.press(held, devices);
  co_await held.pressKey(std::move(key), devices);
  co_await modifiers.release(held, devices);
}

}  // namespace tarni::session
