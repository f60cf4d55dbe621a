#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>

#include "host/cli/Locator.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

// Without an element, or with an empty identifier, the agent takes the window's first view.
std::string elementOf(const Target& target, Session& session,
                      const std::vector<std::string>& arguments) {
  const bool isWindow = !target.isGiven() && (arguments.size() < 2 || arguments.front().empty());
  return isWindow ? "" : target.resolve(session, 1);
}

void swipe(Session& session, const Target& target) {
  const auto& arguments = target.arguments();
  const std::vector<std::string> directions = {"left", "right", "up", "down"};
  if (arguments.empty() ||
      std::find(directions.begin(), directions.end(), arguments.back()) == directions.end()) {
    throw std::invalid_argument("where to? left, right, up or down");
  }
  const auto id = elementOf(target, session, arguments);
  const auto answer = session.call({"swipeon", "", "", id, arguments.back()});
  if (session.options.json) std::cout << printableJson(answer.text()) << '\n';
}

void declareEverywhere(CLI::App& parser, Session& session, const char* function) {
  parser.callback([&session, function] {
    const auto answer = session.call({function});
    if (session.options.json) std::cout << printableJson(answer.text()) << '\n';
  });
}

}  // namespace

void declareSwipe(CLI::App& parser, Session& session) {
  const auto target = std::make_shared<Target>();
  target->declare(parser, "left|right|up|down");
  parser.callback([target, &session] { swipe(session, *target); });
}

void declareSwipeTo(CLI::App& parser, Session& session) {
  declareEverywhere(parser, session, "swipeto");
}

void declareSwipeReset(CLI::App& parser, Session& session) {
  declareEverywhere(parser, session, "swipereset");
}

}  // namespace tarni::host
