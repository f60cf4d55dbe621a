#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Spot.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

struct ClickOptions {
  Target target;
  bool isDouble = false;
  bool isRight = false;
  bool isMiddle = false;
  std::string modifiers;
  std::string at;

  bool isPlain() const {
    return !isDouble && !isRight && !isMiddle && modifiers.empty() && at.empty();
  }
  const char* button() const { return isRight ? "right" : isMiddle ? "middle" : "left"; }
};

void tap(Invocation& invocation, const Target& target, const char* function) {
  const auto answer = invocation.call({function, "", "", target.resolve(invocation)});
  if (invocation.options.json) std::cout << printableJson(answer.text()) << '\n';
}

// At a point of its own choice the pointer does by itself what `element.click` does.
void clickAt(Invocation& invocation, const ClickOptions& options, Json place) {
  auto steps = Json::array({{{"move", std::move(place)}}});
  for (int turn = 0; turn < (options.isDouble ? 2 : 1); ++turn) {
    for (const auto* const way : {"down", "up"}) steps.push_back({{way, options.button()}});
  }
  const HeldKeys held(invocation, options.modifiers);
  invocation.act("input.pointer", {{"steps", std::move(steps)}});
}

void click(Invocation& invocation, const ClickOptions& options) {
  if (!invocation.session()) {
    if (!options.isPlain()) invocation.needSession();
    tap(invocation, options.target, "clickelement");
    return;
  }
  if (!options.target.isNamed() && !options.at.empty()) {
    clickAt(invocation, options, pointFrom(options.at));
    return;
  }
  const auto element = options.target.element(invocation);
  if (!options.at.empty()) {
    auto place = pointFrom(options.at);
    place["element"] = element;
    clickAt(invocation, options, std::move(place));
    return;
  }
  invocation.act("element.click", {{"element", element},
                                   {"button", options.button()},
                                   {"count", options.isDouble ? 2 : 1},
                                   {"modifiers", options.modifiers}});
}

}  // namespace

void declareClick(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<ClickOptions>();
  options->target.declare(parser);
  parser.add_flag("--double", options->isDouble, "twice *");
  auto* const right = parser.add_flag("--right", options->isRight, "with the right button *");
  parser.add_flag("--middle", options->isMiddle, "with the middle button *")->excludes(right);
  parser.add_option("--with", options->modifiers, "with these keys down, as Control+Shift *")
      ->type_name("KEYS");
  parser
      .add_option("--at", options->at,
                  "there, from its upper left corner; without an element, in the key window *")
      ->type_name("X,Y");
  parser.footer(kNeedsSession);
  parser.callback([options, &invocation] { click(invocation, *options); });
}

void declareHighlight(CLI::App& parser, Invocation& invocation) {
  const auto target = std::make_shared<Target>();
  target->declare(parser);
  parser.footer(kByPortOnly);
  parser.callback([target, &invocation] { tap(invocation, *target, "highlight"); });
}

}  // namespace tarni::host
