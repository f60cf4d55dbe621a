#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "host/guard/Text.h"
#include "host/guard/Words.h"
#include "host/source/Attributes.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Screen.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

// A dialog: a window that keeps the user from the others or, where dialogs are none, what lies over
// a window's contents with a text and buttons.
struct Alert {
  long element;
  bool isWindow;
};

bool isShown(const pugi::xml_node& node) {
  return std::string_view(node.attribute("visible").value()) == "true";
}

Rectangle nodeRectangle(const pugi::xml_node& node) {
  const auto number = [&node](const char* name) { return node.attribute(name).as_double(); };
  return {number("x"), number("y"), number("width"), number("height")};
}

bool overlap(const Rectangle& one, const Rectangle& other) {
  return one.x < other.x + other.width && other.x < one.x + one.width &&
         one.y < other.y + other.height && other.y < one.y + one.height;
}

// What lies over what stands before it, in the window or in the one view that fills it; null for
// nothing.
pugi::xml_node overlayOf(pugi::xml_node outer) {
  while (outer) {
    auto last = outer.last_child();
    while (last && !isShown(last)) last = last.previous_sibling();
    bool isAlone = true;
    for (auto before = last.previous_sibling(); before; before = before.previous_sibling()) {
      if (!isShown(before)) continue;
      if (overlap(nodeRectangle(last), nodeRectangle(before))) return last;
      isAlone = false;
    }
    if (!isAlone) break;
    outer = last;
  }
  return {};
}

std::vector<Json> partsOf(Session& session, const Alert& alert, const char* kind) {
  const Json answer =
      session.call("element.find", {{"kind", kind}, {"visible", true}, {"within", alert.element}});
  const Json elements = answer.value("elements", Json::array());
  return {elements.begin(), elements.end()};
}

// Throws Error ("no such alert").
Alert alertOf(Session& session) {
  const Screen screen(session);
  if (const auto* const dialog = screen.dialog()) return {handleOf(*dialog), true};
  const auto& tree = session.source();
  if (const auto overlay = overlayOf(tree.node(handleOf(screen.current())))) {
    const Alert alert{SourceTree::handleOf(overlay), false};
    const bool asks =
        !partsOf(session, alert, "UILabel").empty() && !partsOf(session, alert, "UIButton").empty();
    if (asks) return alert;
  }
  throw Error("no such alert", "no dialog keeps the user from the program");
}

std::optional<Alert> openAlert(Session& session) {
  try {
    return alertOf(session);
  } catch (const Error& error) {
    if (error.name() != "no such alert" && error.name() != "no such window") throw;
    return std::nullopt;
  }
}

std::string alertTextOf(const Json& element) {
  return attributeOf(element, "text").value_or("");
}

std::string textOf(Session& session, const Alert& alert) {
  std::string lines;
  for (const auto& label : partsOf(session, alert, "UILabel")) {
    const auto text = alertTextOf(label);
    if (!text.empty()) addWord(lines, text, "\n");
  }
  return lines;
}

bool saysNo(const Json& button) {
  constexpr std::string_view kWords[] = {"cancel", "no", "close", "dismiss", "reject", "deny"};
  return std::ranges::find(kWords, lowerCase(alertTextOf(button))) != std::end(kWords);
}

// A dialog of its own knows the keys for it; another one has buttons, the one that says no last,
// unless its text tells.
Json answerAlert(Session& session, bool isYes) {
  const auto alert = alertOf(session);
  if (alert.isWindow && session.hasInput()) {
    session.call("window.activate", {{"window", alert.element}});
    session.call("input.keys", {{"steps", Json::array({isYes ? "Enter" : "Escape"})}});
    return nullptr;
  }
  const auto buttons = partsOf(session, alert, "UIButton");
  if (buttons.empty()) throw Error("element not interactable", "the dialog has no buttons");
  auto chosen = std::ranges::find_if(
      buttons, [isYes](const Json& button) { return saysNo(button) != isYes; });
  if (chosen == buttons.end()) chosen = isYes ? buttons.begin() : std::prev(buttons.end());
  session.call("element.click", {{"element", handleOf(*chosen)}});
  return nullptr;
}

}  // namespace

Json alertText(Session& session, const Arguments&) {
  return textOf(session, alertOf(session));
}

std::optional<std::string> alertOver(Session& session, Session::Handle page) {
  const auto alert = openAlert(session);
  if (!alert) return std::nullopt;
  for (auto node = session.source().node(page); node; node = node.parent()) {
    if (SourceTree::handleOf(node) == alert->element) return std::nullopt;
  }
  return textOf(session, *alert);
}

Json acceptAlert(Session& session, const Arguments&) {
  return answerAlert(session, true);
}

Json dismissAlert(Session& session, const Arguments&) {
  return answerAlert(session, false);
}

Json typeIntoAlert(Session& session, const Arguments& arguments) {
  const auto text = arguments.text("text");
  const auto fields = partsOf(session, alertOf(session), "UITextField");
  if (fields.empty()) throw Error("element not interactable", "the dialog asks for no text");
  session.call("element.setText", {{"element", handleOf(fields.front())}, {"text", text}});
  return nullptr;
}

}  // namespace tarni::host::webdriver
