// A headless program with a web view between native controls. Its page is scripted: as much of the
// page of an order (samples/web/pages/form.html) as the cases for pages look at, with the answers
// that the page scripts give. A person presses its picture every half a second until commands come.
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/WebView.h"
#include "entry/StartAgent.h"

namespace tarni::test {
namespace {

using nlohmann::json;

struct Element {
  std::string tag;
  std::string text;
  std::string path;
  bool isInForm = true;
  std::string value = text;
};

std::vector<Element> orderPage() {
  return {{"FORM", "", "//form", false},
          {"INPUT", "Customer", "//input[@name='customer']", true, ""},
          {"BUTTON", "Send order", "//button[@type='submit']"},
          {"BUTTON", "Ask", "//button[.='Ask']"},
          {"IMG", "Logo", "//img"},
          {"A", "Terms", "//a[@href='next.html']"},
          {"BUTTON", "Check", "//iframe >> //button", false},
          {"BUTTON", "More", "//x-stepper >> //button", false},
          {"OUTPUT", "", "//output", false}};
}

std::vector<Element> nextPage() {
  return {{"H1", "Terms", "//h1", false}, {"A", "Back to the order", "//a", false}};
}

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

class Page {
 public:
  explicit Page(std::function<void()> navigate) : navigate_(std::move(navigate)) {}

  bool isPlayed() const { return isPlayed_; }
  void show(std::vector<Element> elements) {
    elements_ = std::move(elements);
    known_.clear();
  }
  void pressPicture() {
    const json object = {{"ObjectImage", "TARNI_OBJECT_IMAGE"},
                         {"className", "IMG"},
                         {"sahiText", "Logo"},
                         {"mode", "web"}};
    steps_.push_back({{"action", "ClickImage"},
                      {"popupName", ""},
                      {"arguments", {object, {{"type", "string"}, {"data", ""}}}}});
  }

  std::string evaluate(const std::string& script) {
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

 private:
  std::string takeSteps() {
    const std::string text = steps_.empty() ? "" : json(steps_).dump();
    steps_.clear();
    return text;
  }

  static bool fits(const Element& element, const std::string& accessor, const std::string& value) {
    if (accessor == "text") return element.text == value;
    if (accessor == "partialtext") {
      return lowercase(element.text).find(lowercase(value)) != std::string::npos;
    }
    return accessor == "xpath" ? element.path == value : accessor.empty();
  }

  std::string find(const std::vector<std::string>& values, bool isInForm) {
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

  std::string identifier(std::size_t place) const {
    return "web-" + std::to_string(searches_) + "-" + std::to_string(place);
  }

  Element* known(const std::string& id) const {
    for (std::size_t place = 0; place < known_.size(); ++place) {
      if (identifier(place) == id) return known_[place];
    }
    return nullptr;
  }

  std::string click(const Element* element) {
    if (element && element->text == "Send order") {
      elements_.back().text = elements_.back().value = "sent by " + elements_[1].value;
    } else if (element && element->tag == "A") {
      navigate_();
    }
    return "";
  }

  static std::string type(Element* element, const std::string& text) {
    if (element) element->value = text;
    return "";
  }

  std::function<void()> navigate_;
  std::vector<Element> elements_ = orderPage();
  std::vector<Element*> known_;
  std::vector<json> steps_;
  int searches_ = 0;
  bool isPlayed_ = false;
};

void pressPictures(headless::Environment& environment, const headless::WebView& view, Page& page) {
  if (page.isPlayed()) return;
  environment.finger().tap(view);
  // The page tells of it once the agent has the picture of the touch.
  environment.runLoop().after(0.25, [&page] { page.pressPicture(); });
  environment.runLoop().after(0.5, [&] { pressPictures(environment, view, page); });
}

int run() {
  static auto& environment = *new headless::Environment;
  environment.install();
  const auto window = environment.makeWindow();
  headless::build<headless::Button>("Close order").frame({{20, 780}, {350, 44}}).in(*window);
  const auto view =
      headless::build<headless::WebView>().frame({{0, 100}, {390, 600}}).in(*window).get();
  Page page([&] {
    view->setLoading(true);
    environment.runLoop().after(0.3, [&] {
      page.show(nextPage());
      view->setLoading(false);
    });
  });
  view->setEngine([&page](const std::string& script) { return page.evaluate(script); });
  entry::startAgent(platform::current());
  pressPictures(environment, *view, page);
  environment.runLoop().run();
  return 0;
}

}  // namespace
}  // namespace tarni::test

int main() {
  return tarni::test::run();
}
