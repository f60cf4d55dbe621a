#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Spot.h"
#include "host/cli/Subcommands.h"

namespace tarni::host {

namespace {

struct DragOptions {
  std::string from;
  std::string to;
  std::string by;
  std::string modifiers;
  bool isRight = false;
  double seconds = 0.2;
};

// From the same place, so many points on.
Json movedBy(Invocation& invocation, Json spot, const std::string& by) {
  const auto way = pointFrom(by);
  if (spot.contains("element") && !spot.contains("x")) {
    const auto description = invocation.described(spot["element"].get<long>());
    const Json& rectangle = objectIn(description, "rect");
    spot["x"] = rectangle.value("width", 0.0) / 2;
    spot["y"] = rectangle.value("height", 0.0) / 2;
  }
  for (const auto* const axis : {"x", "y"}) {
    spot[axis] = spot[axis].get<double>() + way[axis].get<double>();
  }
  return spot;
}

// Where it is in its window: what is dragged may move along.
Json inItsWindow(Invocation& invocation, const Json& spot) {
  if (!spot.contains("element")) return spot;
  const auto description = invocation.described(spot["element"].get<long>());
  const Json& rectangle = objectIn(description, "rect");
  return {{"window", description.value("window", Json())},
          {"x", rectangle.value("x", 0.0) + spot.value("x", 0.0)},
          {"y", rectangle.value("y", 0.0) + spot.value("y", 0.0)}};
}

void drag(Invocation& invocation, const DragOptions& options) {
  invocation.needSession();
  if (options.to.empty() == options.by.empty()) {
    throw std::invalid_argument("where to? A second place, or --by X,Y");
  }
  const auto from = spotFrom(invocation, options.from);
  const auto to = options.by.empty()
                      ? spotFrom(invocation, options.to)
                      : inItsWindow(invocation, movedBy(invocation, from, options.by));
  const HeldKeys held(invocation, options.modifiers);
  constexpr double kMilliseconds = 1000;
  invocation.act("input.drag", {{"from", from},
                                {"to", to},
                                {"button", options.isRight ? "right" : "left"},
                                {"duration", options.seconds * kMilliseconds}});
}

struct ScrollOptions {
  Target target;
  std::string toText;
  bool intoView = false;
};

struct Turn {
  double right = 0;
  double down = 0;
};

Turn turnFrom(const std::string& direction, double notches) {
  if (direction == "up") return {0, -notches};
  if (direction == "down") return {0, notches};
  if (direction == "left") return {-notches, 0};
  if (direction == "right") return {notches, 0};
  throw std::invalid_argument("where to? up, down, left or right");
}

void turnWheel(Invocation& invocation, const Target& target) {
  auto words = target.arguments();
  double notches = 3;
  const bool isCounted =
      words.size() > 1 && words.back().find_first_not_of("0123456789.") == std::string::npos;
  if (isCounted) {
    notches = std::stod(words.back());
    words.pop_back();
  }
  if (words.empty()) throw std::invalid_argument("where to? up, down, left or right");
  const auto [right, down] = turnFrom(words.back(), notches);
  Json parameters = {{"right", right}, {"down", down}};
  if (target.isGiven() || words.size() > 1) {
    const auto others = target.arguments().size() - (target.isGiven() ? 0 : 1);
    parameters["at"] = {{"element", target.element(invocation, others)}};
  }
  invocation.act("input.wheel", std::move(parameters));
}

void scroll(Invocation& invocation, const ScrollOptions& options) {
  invocation.needSession();
  const auto& target = options.target;
  if (options.intoView) {
    invocation.act("element.scrollIntoView", {{"element", target.element(invocation)}});
  } else if (!options.toText.empty()) {
    invocation.act("element.scrollToText",
                   {{"element", target.element(invocation)}, {"text", options.toText}});
  } else {
    turnWheel(invocation, target);
  }
}

}  // namespace

void declareHover(CLI::App& parser, Invocation& invocation) {
  const auto target = std::make_shared<Target>();
  const auto at = std::make_shared<std::string>();
  target->declare(parser);
  parser.add_option("--at", *at, "there, from its upper left corner")->type_name("X,Y");
  parser.footer(kSessionOnly);
  parser.callback([target, at, &invocation] {
    invocation.needSession();
    auto spot = at->empty() ? Json::object() : pointFrom(*at);
    spot["element"] = target->element(invocation);
    invocation.act("input.pointer", {{"steps", Json::array({{{"move", std::move(spot)}}})}});
  });
}

void declareDrag(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<DragOptions>();
  parser.add_option("FROM", options->from, "where the button goes down")
      ->required()
      ->option_text(" ");
  parser.add_option("TO", options->to, "where it goes up")->option_text(" ");
  parser.add_option("--by", options->by, "so many points on instead of TO")->type_name("X,Y");
  parser.add_flag("--right", options->isRight, "with the right button");
  parser.add_option("--with", options->modifiers, "with these keys down, as Control+Shift")
      ->type_name("KEYS");
  parser.add_option("--duration", options->seconds, "how long the way takes (default 0.2)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
  parser.footer(
      "A place is an element, by its identifier (12) or its looks (\"Row 3\", kind=UISlider), of\n"
      "which it is the middle, 12@3,4 from the element's upper left corner, or @30,40 in the key\n"
      "window.");
  parser.callback([options, &invocation] { drag(invocation, *options); });
}

void declareScroll(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<ScrollOptions>();
  options->target.declare(parser, "up|down|left|right [NOTCHES]");
  auto* const into =
      parser.add_flag("--into-view", options->intoView, "scroll until the element is in sight");
  parser
      .add_option("--to-text", options->toText,
                  "scroll the list, table or tree until the item with this text is in sight")
      ->excludes(into);
  parser.footer(
      "Turns the wheel over the element, or where the pointer is. An item is found whether it has\n"
      "been on screen before or not.");
  parser.callback([options, &invocation] { scroll(invocation, *options); });
}

}  // namespace tarni::host
