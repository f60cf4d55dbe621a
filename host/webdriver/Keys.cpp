#include "host/webdriver/Keys.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/guard/Text.h"
#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

namespace {

// From U+E000 on.
constexpr std::string_view kKeyNames[] = {
    "",          "Cancel",   "Help",    "Backspace", "Tab",       "Clear",   "Enter",
    "Enter",     "Shift",    "Control", "Alt",       "Pause",     "Escape",  " ",
    "PageUp",    "PageDown", "End",     "Home",      "ArrowLeft", "ArrowUp", "ArrowRight",
    "ArrowDown", "Insert",   "Delete",  ";",         "=",         "0",       "1",
    "2",         "3",        "4",       "5",         "6",         "7",       "8",
    "9",         "*",        "+",       ",",         "-",         ".",       "/",
    "",          "",         "",        "",          "",          "",        "",
    "F1",        "F2",       "F3",      "F4",        "F5",        "F6",      "F7",
    "F8",        "F9",       "F10",     "F11",       "F12",       "Meta",    "",
    "",          "",         "",        "",          "",          "",        "",
    "",          "",         "",        "",          "",          "",        "",
    "",          "",         "",        "Shift",     "Control",   "Alt",     "Meta",
    "PageUp",    "PageDown", "End",     "Home",      "ArrowLeft", "ArrowUp", "ArrowRight",
    "ArrowDown", "Insert",   "Delete",
};

constexpr std::size_t kMostKeySteps = 10'000;  // as `input.keys` takes them
constexpr unsigned kFirst = 0xE000;

// Of a character of three bytes; 0 for all others.
unsigned pointOf(std::string_view character) {
  if (character.size() != 3) return 0;
  const auto bits = [&character](std::size_t at) {
    return static_cast<unsigned>(static_cast<unsigned char>(character[at]) & 0x3FU);
  };
  return ((static_cast<unsigned>(static_cast<unsigned char>(character[0])) & 0x0FU) << 12U) |
         (bits(1) << 6U) | bits(2);
}

}  // namespace

std::string keyNamed(const std::string& character) {
  const auto point = pointOf(character);
  if (point >= kFirst && point < kFirst + std::size(kKeyNames)) {
    return std::string(kKeyNames[point - kFirst]);
  }
  if (character == "\n" || character == "\r") return "Enter";
  return character == "\t" ? "Tab" : character;
}

bool isModifier(const std::string& key) {
  return key == "Shift" || key == "Control" || key == "Alt" || key == "Meta";
}

Json stepsTyping(std::string_view text) {
  Json steps = Json::array();
  std::vector<std::string> held;
  const auto letGo = [&] {
    for (const auto& key : held) steps.push_back({{"up", key}});
    held.clear();
  };
  for (const auto& character : charactersOf(text)) {
    const auto key = keyNamed(character);
    if (key.empty()) {
      letGo();
    } else if (isModifier(key)) {
      steps.push_back({{"down", key}});
      held.push_back(key);
    } else {
      steps.push_back(key);
    }
  }
  letGo();
  return steps;
}

void typeText(Session& session, std::string_view text) {
  const Json steps = stepsTyping(text);
  for (std::size_t at = 0; at < steps.size(); at += kMostKeySteps) {
    Json some = Json::array();
    for (auto step = at; step < std::min(at + kMostKeySteps, steps.size()); ++step) {
      some.push_back(steps[step]);
    }
    session.call("input.keys", {{"steps", some}});
  }
}

}  // namespace tarni::host::webdriver
