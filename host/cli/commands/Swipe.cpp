#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>

#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

// Without an element, or with an empty identifier, the agent takes the window's first view.
std::string elementOf(const Target& target, Invocation& invocation,
                      const std::vector<std::string>& arguments) {
  const bool isWindow = !target.isGiven() && (arguments.size() < 2 || arguments.front().empty());
  return isWindow ? "" : target.resolve(invocation, 1);
}

void swipe(Invocation& invocation, const Target& target) {
  const auto& arguments = target.arguments();
  const std::vector<std::string> directions = {"left", "right", "up", "down"};
  if (arguments.empty() ||
      std::find(directions.begin(), directions.end(), arguments.back()) == directions.end()) {
    throw std::invalid_argument("where to? left, right, up or down");
  }
  const auto id = elementOf(target, invocation, arguments);
  const auto answer = invocation.call({"swipeon", "", "", id, arguments.back()});
  if (invocation.options.json) std::cout << printableJson(answer.text()) << '\n';
}

void declareEverywhere(CLI::App& parser, Invocation& invocation, const char* function) {
  parser.footer(kByPortOnly);
  parser.callback([&invocation, function] {
    const auto answer = invocation.call({function});
    if (invocation.options.json) std::cout << printableJson(answer.text()) << '\n';
  });
}

}  // namespace

void declareSwipe(CLI::App& parser, Invocation& invocation) {
  const auto target = std::make_shared<Target>();
  target->declare(parser, "left|right|up|down");
  parser.footer(kByPortOnly);
  parser.callback([target, &invocation] { swipe(invocation, *target); });
}

void declareSwipeTo(CLI::App& parser, Invocation& invocation) {
  declareEverywhere(parser, invocation, "swipeto");
}

void declareSwipeReset(CLI::App& parser, Invocation& invocation) {
  declareEverywhere(parser, invocation, "swipereset");
}

}  // namespace tarni::host
