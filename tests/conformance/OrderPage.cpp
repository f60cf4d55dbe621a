#include "tests/conformance/OrderPage.h"

#include <cctype>
#include <utility>

namespace tarni::test {
namespace {

using nlohmann::json;

std::string lowercase(std::string text) {
  for (char& letter : text) letter = static_cast<char>(std::tolower(letter));
  return text;
}

// One escaped character of a JavaScript string; `at` stands on the backslash and then behind it.
std::string unescaped(const std::string& script, std::size_t& at) {
  const char kind = script[at + 1];
  const std::size_t digits = kind == 'x' ? 2 : kind == 'u' ? 4 : 0;
  const std::size_t begin = at + 2;
  at = begin + digits;
  if (digits == 0) return {kind};
  const int code = std::stoi(script.substr(begin, digits), nullptr, 16);
  if (code < 0x80) return {static_cast<char>(code)};
  return code == 0x2028 ? "\u2028" : "\u2029";
}

// The values of a call: `f('a','b')`.
std::vector<std::string> valuesOf(const std::string& script) {
  std::vector<std::string> values;
  for (std::size_t at = script.find('\''); at < script.size(); at = script.find('\'', at + 1)) {
    std::string value;
    for (++at; script.at(at) != '\'';) {
      value += script[at] == '\\' ? unescaped(script, at) : std::string(1, script[at++]);
    }
    values.push_back(value);
  }
  return values;
}

}  // namespace

OrderPage::OrderPage(std::function<void()> navigate)
    : navigate_(std::move(navigate)),
      elements_{{"FORM", "", "//form", false},
                {"INPUT", "Customer", "//input[@name='customer']", true, ""},
                {"BUTTON", "Send order", "//button[@type='submit']"},
                {"BUTTON", "Ask", "//button[.='Ask']"},
                {"IMG", "Logo", "//img"},
                {"A", "Terms", "//a[@href='next.html']"},
                {"BUTTON", "Check", "//iframe >> //button", false},
                {"BUTTON", "More", "//x-stepper >> //button", false},
                {"OUTPUT", "", "//output", false}} {}

void OrderPage::showNext() {
  elements_ = {{"H1", "Terms", "//h1", false}, {"A", "Back to the order", "//a", false}};
  known_.clear();
}

void OrderPage::pressPicture() {
  const json object = {{"ObjectImage", "TARNI_OBJECT_IMAGE"},
                       {"className", "IMG"},
                       {"sahiText", "Logo"},
                       {"mode", "web"}};
  steps_.push_back({{"action", "ClickImage"},
                    {"popupName", ""},
                    {"arguments", {object, {{"type", "string"}, {"data", ""}}}}});
}

// The values of `call` are JSON texts, separated by commas.
std::string OrderPage::session(const std::string& call) {
  const std::size_t open = call.find('(');
  const std::string name = call.substr(0, open);
  const json values = json::parse("[" + call.substr(open + 1, call.rfind(')') - open - 1) + "]");
  const bool isOfOne = !values.empty() && values[0].is_number();
  json nodes = json::array();
  for (std::size_t number = 1; number <= elements_.size(); ++number) {
    Element& element = elements_[number - 1];
    const json told = {{"node", number},
                       {"parent", 0},
                       {"class", lowercase(element.tag)},
                       {"text", element.tag == "INPUT" ? element.value : element.text},
                       {"width", 100},
                       {"height", 20},
                       {"visible", true},
                       {"enabled", true},
                       {"focused", false}};
    const json wanted = isOfOne ? json{{"node", values[0]}} : values.empty() ? json() : values[0];
    bool isFit = true;
    for (const auto& [part, value] : wanted.items()) isFit = isFit && told[part] == value;
    if (!isFit) continue;
    nodes.push_back(told);
    if (name == "tarniSessionClick") click(&element);
    if (name == "tarniSessionSetText") type(&element, values[1]);
  }
  return json{{"page", "order"}, {"nodes", nodes}}.dump();
}

std::string OrderPage::evaluate(const std::string& script) {
  const std::size_t called = script.find("?tarniSession");
  if (called != std::string::npos) {
    return session(script.substr(called + 1, script.rfind(':') - called - 1));
  }
  const std::string name = script.substr(0, script.find('('));
  if (name == "IsInjectionDone") return "DONE";
  if (name == "startRecording") return takeSteps();
  const std::vector<std::string> values = valuesOf(script);
  isPlayed_ = isPlayed_ || name.starts_with("find");
  if (name == "findElements") return find(values, false);
  if (name == "findElementsInsideElement") return known(values[3]) ? find(values, true) : "";
  if (name == "performClick") return click(known(values[0]));
  if (name == "performTypeText") return type(known(values[0]), values[1]);
  if (name != "tarni_getText" || !known(values[0])) return "";
  return json{{{"output", known(values[0])->value}}}.dump();
}

std::string OrderPage::takeSteps() {
  const std::string text = steps_.empty() ? "" : json(steps_).dump();
  steps_.clear();
  return text;
}

bool OrderPage::fits(const Element& element, const std::string& accessor,
                     const std::string& value) {
  if (accessor == "text") return element.text == value;
  if (accessor == "partialtext") {
    return lowercase(element.text).find(lowercase(value)) != std::string::npos;
  }
  return accessor == "xpath" ? element.path == value : accessor.empty();
}

std::string OrderPage::find(const std::vector<std::string>& values, bool isInForm) {
  known_.clear();
  ++searches_;
  json entries = json::array();
  for (Element& element : elements_) {
    if (!values[0].empty() && lowercase(element.tag) != lowercase(values[0])) continue;
    if ((isInForm && !element.isInForm) || !fits(element, values[1], values[2])) continue;
    entries.push_back({{"elementID", identifier(known_.size())}});
    known_.push_back(&element);
  }
  return entries.empty() ? "" : entries.dump();
}

std::string OrderPage::identifier(std::size_t place) const {
  return "web-" + std::to_string(searches_) + "-" + std::to_string(place);
}

OrderPage::Element* OrderPage::known(const std::string& id) const {
  for (std::size_t place = 0; place < known_.size(); ++place) {
    if (identifier(place) == id) return known_[place];
  }
  return nullptr;
}

std::string OrderPage::click(const Element* element) {
  if (element && element->text == "Send order") {
    elements_.back().text = elements_.back().value = "sent by " + elements_[1].value;
  } else if (element && element->tag == "A") {
    navigate_();
  }
  return "";
}

std::string OrderPage::type(Element* element, const std::string& text) {
  if (element) element->value = text;
  return "";
}

}  // namespace tarni::test
