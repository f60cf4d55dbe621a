#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Subcommands.h"

namespace tarni::host {

namespace {

// A switch is set to a truth value, and a text is as good as a number.
Json valueFrom(const std::string& word) {
  if (word == "on" || word == "true") return true;
  if (word == "off" || word == "false") return false;
  return word;
}

void set(Invocation& invocation, const Target& target) {
  invocation.needSession();
  const auto element = target.element(invocation, 1);
  const auto word = target.others().front();
  try {
    invocation.act("element.setValue", {{"element", element}, {"value", valueFrom(word)}});
  } catch (const RequestError& error) {
    if (error.name() != "unsupported operation") throw;
    invocation.act("element.setText", {{"element", element}, {"text", word}});
  }
}

// One element and nothing else.
void declareOn(CLI::App& parser, Invocation& invocation, const char* method, const Json& others) {
  const auto target = std::make_shared<Target>();
  target->declare(parser);
  parser.footer(kSessionOnly);
  parser.callback([target, method, others, &invocation] {
    invocation.needSession();
    auto parameters = others;
    parameters["element"] = target->element(invocation);
    invocation.act(method, std::move(parameters));
  });
}

}  // namespace

void declareSet(CLI::App& parser, Invocation& invocation) {
  const auto target = std::make_shared<Target>();
  target->declare(parser, "VALUE");
  parser.footer(
      "VALUE is what a person would choose: the text of an entry of a combo box, a list or a tab\n"
      "bar, the number of a spin box or a slider, on or off of a switch, the text of a field.");
  parser.callback([target, &invocation] { set(invocation, *target); });
}

void declareFocus(CLI::App& parser, Invocation& invocation) {
  declareOn(parser, invocation, "element.focus", Json::object());
}

void declareExpand(CLI::App& parser, Invocation& invocation) {
  declareOn(parser, invocation, "element.setExpanded", {{"expanded", true}});
}

void declareCollapse(CLI::App& parser, Invocation& invocation) {
  declareOn(parser, invocation, "element.setExpanded", {{"expanded", false}});
}

}  // namespace tarni::host
