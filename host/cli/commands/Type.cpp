#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"
#include "host/session/Step.h"
#include "host/stream/Typing.h"

namespace tarni::host {

namespace {

void typeByPort(Invocation& invocation, const Target& target) {
  const auto id = target.resolve(invocation, 1);
  const auto text = target.others().front();
  const Typing typing(invocation.playback(), id);
  const auto answer = invocation.call({"sendkeysonelement", "", "", id, text});
  if (invocation.options.json) std::cout << printableJson(answer.text()) << '\n';
  if (const auto outcome = typing.outcome(text); outcome.isFailure) {
    throw NotFound(target.description() + ": " + outcome.message);
  }
}

// What the field holds now; null when it does not tell, or has gone.
std::optional<std::string> textOf(Invocation& invocation, long element) {
  try {
    const auto description = invocation.described(element);
    return isTrue(description, "secure") ? std::nullopt : valueIn(description, "text");
  } catch (const RequestError&) {
    return std::nullopt;
  }
}

void replaceText(Invocation& invocation, const Target& target) {
  const auto element = target.element(invocation, 1);
  const auto text = target.others().front();
  try {
    invocation.act("element.setText", {{"element", element}, {"text", text}});
  } catch (const RequestError& error) {
    throw NotFound(target.description() + ": " + printable(error.what()));
  }
  const auto holds = textOf(invocation, element);
  if (text.empty() || text.ends_with('\n') || !holds || *holds == text) return;
  throw NotFound(target.description() + ": typed " + inQuotes(text) + ", but it holds " +
                 inQuotes(*holds));
}

// "12, UITextField "Name"", of what has the focus; "" when nothing has.
std::string focusInWords(Invocation& invocation, bool isValue) {
  Selector selector;
  selector.isFocused = true;
  const auto focused = findAll(invocation.needSession(), {selector});
  if (focused.empty()) return "";
  // A control has the focus together with the field in it.
  const Json& element = focused.back();
  return std::to_string(handleOf(element)) + ", " + elementInWords(element, isValue);
}

// Who names no element wants to know which has it now.
void sayWhere(Invocation& invocation) {
  const auto where = focusInWords(invocation, true);
  if (!where.empty()) std::cerr << "tarni: typed into " << where << '\n';
}

[[noreturn]] void refuseText(Invocation& invocation, const RequestError& error) {
  const auto where = focusInWords(invocation, false);
  throw NotFound(where.empty() ? printable(error.what())
                               : where + ", which has the focus, takes no text");
}

// At the caret, as a person's keyboard does.
void insertText(Invocation& invocation, const Target& target) {
  Json parameters = Json::object();
  if (target.isNamed(1)) parameters["element"] = target.element(invocation, 1);
  if (target.arguments().empty()) throw std::invalid_argument("which text?");
  parameters["text"] = target.arguments().back();
  const bool isNamed = parameters.contains("element");
  try {
    invocation.act("input.text", std::move(parameters));
  } catch (const RequestError& error) {
    if (error.name() == "element not interactable") refuseText(invocation, error);
    throw;
  }
  if (!isNamed) sayWhere(invocation);
}

void type(Invocation& invocation, const Target& target, bool inserts) {
  if (inserts) invocation.needSession();
  if (inserts || (!target.isNamed(1) && invocation.session())) {
    insertText(invocation, target);
  } else if (invocation.session()) {
    replaceText(invocation, target);
  } else {
    typeByPort(invocation, target);
  }
}

}  // namespace

void declareType(CLI::App& parser, Invocation& invocation) {
  const auto target = std::make_shared<Target>();
  target->declare(parser, "TEXT");
  const auto inserts = std::make_shared<bool>(false);
  parser.add_flag("--insert", *inserts, "at the caret, not instead of what the element holds *");
  parser.footer(
      "Without an element, inserts the text where the keyboard goes *. What is marked * takes the\n"
      "session channel.");
  parser.callback([=, &invocation] { type(invocation, *target, *inserts); });
}

}  // namespace tarni::host
