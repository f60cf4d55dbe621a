#include "host/session/Step.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <stdexcept>

#include "host/guard/Likeness.h"
#include "host/guard/Printable.h"
#include "host/session_client/Selector.h"

namespace tarni::host {

namespace {

enum class MemberType { Text, Number, Flag, Object, List };

struct Member {
  const char* name;
  MemberType type;
};

// Which members an act cannot do without.
struct KnownAct {
  std::string_view act;
  std::vector<Member> needed;
};

const std::vector<KnownAct>& knownActs() {
  static const std::vector<KnownAct> all = {
      {"click", {{"element", MemberType::Object}}},
      {"longPress", {{"element", MemberType::Object}}},
      {"drag", {{"element", MemberType::Object}, {"way", MemberType::List}}},
      {"wheel", {{"element", MemberType::Object}}},
      {"hover", {{"element", MemberType::Object}}},
      {"key", {{"key", MemberType::Text}}},
      {"type", {}},
      {"choose", {{"element", MemberType::Object}, {"value", MemberType::Text}}},
      {"switch", {{"element", MemberType::Object}, {"checked", MemberType::Flag}}},
      {"expand", {{"element", MemberType::Object}, {"expanded", MemberType::Flag}}},
      {"menu", {{"path", MemberType::List}}},
      {"resize", {{"width", MemberType::Number}, {"height", MemberType::Number}}},
      {"close", {{"element", MemberType::Object}}},
      {Step::kCheck, {{"element", MemberType::Object}}},
  };
  return all;
}

constexpr Member kStepMembers[] = {
    {"order", MemberType::Number},      {"time", MemberType::Number},
    {"durationMs", MemberType::Number}, {"element", MemberType::Object},
    {"button", MemberType::Text},       {"count", MemberType::Number},
    {"modifiers", MemberType::Text},    {"at", MemberType::Object},
    {"way", MemberType::List},          {"target", MemberType::Object},
    {"targetAt", MemberType::Object},   {"right", MemberType::Number},
    {"down", MemberType::Number},       {"path", MemberType::List},
    {"key", MemberType::Text},          {"text", MemberType::Text},
    {"secret", MemberType::Text},       {"value", MemberType::Text},
    {"choice", MemberType::Number},     {"checked", MemberType::Flag},
    {"expanded", MemberType::Flag},     {"width", MemberType::Number},
    {"height", MemberType::Number},     {"is", MemberType::Text},
    {"textIs", MemberType::Text},       {"textContains", MemberType::Text},
};

const char* nameOfType(MemberType type) {
  switch (type) {
    case MemberType::Text:
      return "text";
    case MemberType::Number:
      return "number";
    case MemberType::Flag:
      return "true or false";
    case MemberType::Object:
      return "object";
    case MemberType::List:
      break;
  }
  return "list";
}

bool isOf(const Json& value, MemberType type) {
  switch (type) {
    case MemberType::Text:
      return value.is_string();
    case MemberType::Number:
      return value.is_number();
    case MemberType::Flag:
      return value.is_boolean();
    case MemberType::Object:
      return value.is_object();
    case MemberType::List:
      break;
  }
  return value.is_array();
}

void requireType(const Json& members, const Member& member) {
  const auto found = members.find(member.name);
  if (found == members.end() || isOf(*found, member.type)) return;
  throw std::invalid_argument("\"" + std::string(member.name) + "\" is no " +
                              nameOfType(member.type));
}

constexpr std::array<std::string_view, 8> kConditions{
    "there", "gone", "visible", "enabled", "disabled", "checked", "unchecked", "focused"};
constexpr std::array<std::string_view, 5> kButtons{"left", "right", "middle", "back", "forward"};

void requireWord(const Json& members, const char* member, std::span<const std::string_view> words) {
  const auto word = textIn(members, member);
  if (!members.contains(member) || std::ranges::find(words, word) != words.end()) return;
  throw std::invalid_argument("\"" + std::string(member) + "\" cannot be " + inQuotes(word) + "; " +
                              knownInsteadOf(word, words));
}

// Not so like as what may be meant by it: notes have names as well.
void refuseSlips(const Json& members, std::span<const std::string_view> known) {
  constexpr double kSlip = 0.8;
  for (const auto& [name, value] : members.items()) {
    if (std::ranges::find(known, name) != known.end()) continue;
    const auto meant = nearestName(name, known);
    if (meant.empty() || likenessInAnyCase(name, meant) < kSlip) continue;
    throw std::invalid_argument(inQuotes(name) + " is not known; did you mean " +
                                inQuotes(std::string(meant)) + "?");
  }
}

void refuseSlipsInElement(const Json& element) {
  constexpr std::array<std::string_view, 1> kKnown{"locators"};
  refuseSlips(element, kKnown);
}

void requireObjects(const Json& members, const char* list) {
  const auto found = members.find(list);
  if (found == members.end()) return;
  if (!found->is_array()) throw std::invalid_argument("\"" + std::string(list) + "\" is no list");
  const auto isObject = [](const Json& item) { return item.is_object(); };
  if (std::ranges::all_of(*found, isObject)) return;
  throw std::invalid_argument("\"" + std::string(list) + "\" is no list of objects");
}

void requireLocators(const Json& element) {
  const auto locators = element.find("locators");
  if (locators == element.end()) return;
  requireObjects(element, "locators");
  for (const Json& locator : *locators) {
    if (!objectIn(locator, "find").empty()) continue;
    throw std::invalid_argument("a locator has no \"find\" that says how the element looks");
  }
  for (const Json& find : locatorsIn(element)) Selector::require(find);
}

const KnownAct& knownAct(const Json& members) {
  const auto act = textIn(members, "act");
  if (act.empty()) throw std::invalid_argument("the step has no \"act\"");
  const auto found = std::ranges::find(knownActs(), act, &KnownAct::act);
  if (found != knownActs().end()) return *found;
  std::vector<std::string_view> names;
  for (const KnownAct& known : knownActs()) names.push_back(known.act);
  throw std::invalid_argument("the act " + inQuotes(act) + " is not known; " +
                              knownInsteadOf(act, names));
}

std::string menuPath(const Json& members) {
  std::string words;
  for (const Json& entry : members["path"]) {
    words += (words.empty() ? " " : " > ") + printable(textIn(entry, "text"));
  }
  return words;
}

std::string clickInWords(const Json& members) {
  const bool isDouble = members.value("count", 1.0) == 2;
  const auto button = textIn(members, "button");
  const bool isUsual = button.empty() || button == "left";
  return (isUsual ? "" : button + "-") + (isDouble ? "double-click" : "click");
}

// How far a drag went to the right.
std::string lengthOf(const Json& way) {
  return way.empty() ? "" : " by " + std::to_string(std::lround(numberIn(way.back(), "x")));
}

std::string outcomeInWords(const Json& members, bool isChoice) {
  const auto secret = textIn(members, "secret");
  if (!secret.empty()) return " = secret " + printable(secret);
  if (members.contains("text")) return " = " + printable(textIn(members, "text"));
  if (isChoice) return " = " + printable(textIn(members, "value"));
  if (members.contains("checked")) return members["checked"] == true ? " = on" : " = off";
  if (members.contains("expanded")) return members["expanded"] == true ? " = open" : " = closed";
  return "";
}

std::string checkInWords(const Json& members) {
  for (const char* const member : {"textIs", "textContains"}) {
    if (members.contains(member)) return " shows " + inQuotes(textIn(members, member));
  }
  return " is " + printable(members.value("is", "there"));
}

bool isCheckOf(const Json& members) {
  return members.contains("is") || members.contains("textIs") || members.contains("textContains");
}

}  // namespace

Step::Step(Json members) : members_(std::move(members)) {
  if (!members_.is_object()) throw std::invalid_argument("the step is no JSON object");
  const KnownAct& kind = knownAct(members_);
  for (const Member& member : kStepMembers) requireType(members_, member);
  for (const Member& member : kind.needed) {
    if (members_.contains(member.name)) continue;
    throw std::invalid_argument("the step has no \"" + std::string(member.name) + "\"");
  }
  for (const char* const list : {"way", "path"}) requireObjects(members_, list);
  for (const char* const part : {"element", "target"}) requireLocators(objectIn(members_, part));
  for (const Json& entry : members_.value("path", Json::array())) requireLocators(entry);
  if (act() == kCheck && !isCheckOf(members_)) {
    throw std::invalid_argument("the step has neither \"is\" nor \"textIs\" nor \"textContains\"");
  }
  if (act() == "type" && secret().empty() && !members_.contains("text")) {
    throw std::invalid_argument("the step has neither \"text\" nor \"secret\"");
  }
}

void Step::refuseMisspelt(const Json& members) {
  if (!members.is_object()) return;
  static const std::vector<std::string_view> known = [] {
    std::vector<std::string_view> names{"act"};
    for (const Member& member : kStepMembers) names.emplace_back(member.name);
    return names;
  }();
  refuseSlips(members, known);
  requireWord(members, "button", kButtons);
  requireWord(members, "is", kConditions);
  for (const char* const part : {"element", "target"}) {
    refuseSlipsInElement(objectIn(members, part));
  }
}

Step Step::check(Json element, const std::optional<std::string>& text) {
  Json members = {{"act", kCheck}, {"element", std::move(element)}};
  if (text) {
    members["textIs"] = *text;
  } else {
    members["is"] = "there";
  }
  return Step(std::move(members));
}

long Step::order() const {
  return std::lround(numberIn(members_, "order"));
}

int Step::count() const {
  constexpr double kMost = 1'000;
  return static_cast<int>(std::clamp(members_.value("count", 1.0), 1.0, kMost));
}

double Step::time() const {
  return numberIn(members_, "time");
}

const char* Step::memberOfText() const {
  for (const char* const member : {"text", "textIs", "textContains"}) {
    if (members_.contains(member)) return member;
  }
  return act() == "choose" ? "value" : nullptr;
}

std::optional<std::string> Step::text() const {
  const char* const member = memberOfText();
  return member ? std::optional(textIn(members_, member)) : std::nullopt;
}

void Step::setText(const std::string& text) {
  const char* const member = memberOfText();
  if (!member) throw std::invalid_argument("a step \"" + act() + "\" has no text");
  members_[member] = text;
  // What the field held then, where the choice stood, is of the text before.
  members_.erase(act() == "type" ? "value" : "choice");
}

std::string Step::inWords() const {
  const auto kind = act();
  if (kind == "menu") return kind + menuPath(members_);
  if (kind == "key") return kind + " " + printable(textIn(members_, "key"));
  const bool isChoice = kind == "choose";
  const bool isValue = isChoice || element().value("editable", false);
  auto words =
      (kind == "click" ? clickInWords(members_) : kind) + " " + elementInWords(element(), isValue);
  if (kind == kCheck) return words + checkInWords(members_);
  if (kind == "drag") words += lengthOf(members_["way"]);
  return words + outcomeInWords(members_, isChoice);
}

std::vector<Json> locatorsIn(const Json& element) {
  std::vector<Json> finds;
  const auto locators = element.find("locators");
  if (locators == element.end() || !locators->is_array()) return finds;
  for (const Json& locator : *locators) {
    const Json& find = objectIn(locator, "find");
    if (!find.empty()) finds.push_back(find);
  }
  return finds;
}

bool isToBeTold(const Json& element) {
  const auto locators = element.find("locators");
  if (locators == element.end() || !locators->is_array()) return false;
  return std::ranges::any_of(*locators, [](const Json& locator) {
    return locator.is_object() && locator.value("matches", Json(1)) == 1;
  });
}

std::vector<std::string> keysOfChord(const std::string& chord) {
  std::vector<std::string> keys;
  for (std::size_t begin = 0; begin < chord.size();) {
    const auto end = std::min(chord.find('+', begin + 1), chord.size());
    keys.push_back(chord.substr(begin, end - begin));
    begin = end + 1;
  }
  return keys;
}

std::string windowInWords(const Json& window) {
  const auto title = textIn(window, "title");
  const std::string kind = window.value("modal", false) ? "dialog" : "window";
  return title.empty() ? "a " + kind + " without a title" : "the " + kind + " " + inQuotes(title);
}

std::string elementInWords(const Json& element, bool isValue) {
  const auto text = textIn(element, "text");
  const auto label = textIn(element, "label");
  const bool isNamed = !label.empty() && !(isValue && label == text);
  const auto placeholder = textIn(element, "placeholder");
  const auto beside = textIn(objectIn(element, "near"), "label");
  const auto lasting = placeholder.empty() ? beside : placeholder;
  const auto name = isNamed ? label : isValue ? lasting : text;
  const auto words = printable(textIn(element, "class"));
  if (!name.empty()) return words + (words.empty() ? "" : " ") + inQuotes(name);
  // A step that is written by hand may have no more than locators.
  const auto ways = locatorsIn(element);
  return words.empty() && !ways.empty() ? locatorInWords(ways.front()) : words;
}

std::string locatorInWords(const Json& find) {
  auto selector = Selector::fromParameters(find);
  selector.isVisible.reset();
  return printable(selector.written());
}

}  // namespace tarni::host
