#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Spot.h"
#include "host/cli/Subcommands.h"

namespace tarni::host {

namespace {

struct PressOptions {
  std::vector<std::string> keys;
  std::string on;
};

void press(Invocation& invocation, const PressOptions& options) {
  invocation.needSession();
  Json parameters = {{"steps", options.keys}};
  if (!options.on.empty()) parameters["element"] = elementFrom(invocation, options.on);
  invocation.act("input.keys", std::move(parameters));
}

}  // namespace

void declarePress(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<PressOptions>();
  parser
      .add_option("KEYS", options->keys, "keys that go down and up together, as Control+Shift+F2")
      ->option_text("KEYS ...")
      ->required();
  parser
      .add_option("--on", options->on,
                  "the element that gets the focus first: its identifier or its looks")
      ->type_name("ELEMENT");
  parser.footer(
      "Keys are called as in a browser's KeyboardEvent.key: Enter, Escape, F2, ArrowLeft, Delete,\n"
      "a, Ä; Return, Esc, Left and ctrl-a do as well. One after the other: `tarni press Control+a\n"
      "Delete`. Text is for `tarni type`.");
  parser.callback([options, &invocation] { press(invocation, *options); });
}

}  // namespace tarni::host
