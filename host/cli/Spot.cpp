#include "host/cli/Spot.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"

namespace tarni::host {

Json pointFrom(const std::string& text) {
  std::istringstream input(text);
  double x = 0;
  double y = 0;
  char comma = 0;
  if (input >> x >> comma >> y && comma == ',' && input.eof()) return {{"x", x}, {"y", y}};
  throw std::invalid_argument("\"" + text + "\" is no point like 30,40");
}

long elementFrom(Invocation& invocation, const std::string& word) {
  return isHandle(word) ? handleOf(word) : Target(word).element(invocation);
}

Json spotFrom(Invocation& invocation, const std::string& text) {
  const auto at = text.find('@');
  const auto word = text.substr(0, at);
  const bool hasPoint = at != std::string::npos && (word.empty() || isHandle(word));
  if (!hasPoint) return {{"element", elementFrom(invocation, text)}};
  auto spot = pointFrom(text.substr(at + 1));
  if (!word.empty()) spot["element"] = handleOf(word);
  return spot;
}

HeldKeys::HeldKeys(Invocation& invocation, const std::string& keys) : invocation_(invocation) {
  std::istringstream names(keys);
  for (std::string name; std::getline(names, name, '+');) keys_.push_back(name);
  set("down");
}

HeldKeys::~HeldKeys() {
  std::ranges::reverse(keys_);
  try {
    set("up");
  } catch (const std::exception&) {  // the program lets go of them when the connection ends
  }
}

void HeldKeys::set(const char* way) {
  if (keys_.empty()) return;
  auto steps = Json::array();
  for (const auto& key : keys_) steps.push_back({{way, key}});
  invocation_.ask("input.keys", {{"steps", std::move(steps)}});
}

}  // namespace tarni::host
