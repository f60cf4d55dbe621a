// Tests for pytest with Selenium's client.
#include <cctype>
#include <nlohmann/json.hpp>

#include "host/export/LocatorCode.h"
#include "host/export/TestLanguage.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

using Kind = ExportedAct::Kind;
using Helper = TestLanguage::Helper;

constexpr Helper kPythonHelpers[] = {
    {"step", R"(
@contextmanager
def step(name):
    """Names the step that fails: pytest shows what was printed."""
    print(name)
    yield

)"},
    {"last_step", R"(
@contextmanager
def last_step(name):
    """The program may end by it, and with it the session."""
    try:
        with step(name):
            yield
    except WebDriverException as error:
        if "the session is over" not in error.msg:
            raise

)"},
    {"wait_until", R"(
def wait_until(driver, condition):
    return WebDriverWait(driver, PATIENCE).until(condition)

)"},
    {"there", R"(
def there(driver, how, what):
    """The element, once it is there, in sight or not."""
    return wait_until(driver, expected_conditions.presence_of_element_located((how, what)))

)"},
    {"find", R"(
def find(driver, how, what):
    """The element, once it is shown and enabled."""
    return wait_until(driver, expected_conditions.element_to_be_clickable((how, what)))

)"},
    {"call", R"(
def call(driver, method, **parameters):
    """Asks the program itself for what WebDriver has no command for."""
    driver.execute_script("tarni: call", {"method": method, "params": parameters})

)"},
    {"choose", R"(
def choose(driver, element, value):
    call(driver, "element.setValue", element=int(element.id), value=value)

)"},
    {"switch", R"(
def switch(element, on):
    if element.is_selected() != on:
        element.click()

)"},
    {"expand", R"(
def expand(driver, element, opened=True):
    state = element.get_attribute("expanded")
    if state is None:
        element.click()  # an arrow beside the node
    elif (state == "true") != opened:
        call(driver, "element.setExpanded", element=int(element.id), expanded=opened)

)"},
    {"close_window", R"(
def close_window(driver, window):
    call(driver, "window.close", window=int(window.id))

)"},
};

struct Import {
  std::string_view word;
  std::string_view module;
};
constexpr Import kImports[] = {
    {"WebDriverException", "common.exceptions"},
    {"ActionChains", "webdriver.common.action_chains"},
    {"ScrollOrigin", "webdriver.common.actions.wheel_input"},
    {"By", "webdriver.common.by"},
    {"Keys", "webdriver.common.keys"},
    {"expected_conditions", "webdriver.support"},
    {"WebDriverWait", "webdriver.support.ui"},
};

std::string identifierOf(const std::string& name) {
  std::string identifier;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = byte < 0x80U && std::isalnum(byte) != 0;
    identifier += isPlain ? static_cast<char>(std::tolower(byte)) : '_';
  }
  return identifier;
}

std::string keyInPython(const std::string& key) {
  const auto* const named = namedKey(key);
  return named ? "Keys." + std::string(named->inPython) : quoted(key);
}

std::string pairInPython(const ExportedAct::Offset& offset) {
  return std::to_string(offset.x) + ", " + std::to_string(offset.y);
}

class PythonTests : public TestLanguage {
 public:
  std::vector<std::string> statements(const ExportedAct& act) const override;

  std::span<const Helper> helpers() const override { return kPythonHelpers; }

  std::string opening(const Session& session, const std::string& name,
                      const std::string& body) const override;

  std::string test(const std::string& name, const std::string& steps) const override {
    return "\ndef test_" + identifierOf(name) + "(driver):\n" +
           (steps.empty() ? "    pass\n" : steps);
  }

  std::string step(const std::string& words, const std::vector<std::string>& statements,
                   bool isLast) const override {
    auto text =
        std::string("    with ") + (isLast ? "last_step(" : "step(") + quoted(words) + "):\n";
    for (const auto& statement : statements) text += "        " + statement + "\n";
    return text + (statements.empty() ? "        pass\n" : "");
  }

 private:
  static std::string find(const ExportedElement& element) {
    return std::string(element.isShown ? "find" : "there") + "(driver, " + inPython(element) + ")";
  }

  // A chain of actions, with the modifiers held.
  static std::string chain(const ExportedAct& act, const std::string& actions) {
    std::string text = "ActionChains(driver)";
    for (const auto& key : act.modifiers) text += ".key_down(" + keyInPython(key) + ")";
    text += actions;
    for (auto key = act.modifiers.rbegin(); key != act.modifiers.rend(); ++key) {
      text += ".key_up(" + keyInPython(*key) + ")";
    }
    return text + ".perform()";
  }

  static std::string moveTo(const ExportedElement& element,
                            const std::optional<ExportedAct::Offset>& at) {
    return at ? ".move_to_element_with_offset(" + find(element) + ", " + pairInPython(*at) + ")"
              : ".move_to_element(" + find(element) + ")";
  }

  static std::string click(const ExportedAct& act) {
    if (act.isPlainClick()) return find(*act.element) + ".click()";
    const bool isOther = act.button == "right" && act.count == 1;
    const auto once = isOther ? ".context_click()" : ".click()";
    std::string clicks;
    if (act.button == "left" && act.count == 2) clicks = ".double_click()";
    for (int turn = 0; clicks.empty() && turn < act.count; ++turn) clicks += once;
    return chain(act, moveTo(*act.element, act.at) + clicks);
  }

  static std::string drag(const ExportedAct& act) {
    auto actions = moveTo(*act.element, act.at) + ".click_and_hold()";
    for (const auto& offset : act.way) actions += ".move_by_offset(" + pairInPython(offset) + ")";
    if (act.target) actions += moveTo(*act.target, act.targetAt);
    return chain(act, actions + ".release()");
  }

  static std::string wheel(const ExportedAct& act) {
    const auto at = act.at ? ", " + pairInPython(*act.at) : "";
    return chain(act, ".scroll_from_origin(ScrollOrigin.from_element(" + find(*act.element) + at +
                          "), " + pairInPython(act.offset) + ")");
  }

  // Into what was found with the focus; elsewhere the focus decides.
  static std::vector<std::string> press(const ExportedAct& act) {
    auto keys = keyInPython(act.text);
    if (act.count > 1) keys += " * " + std::to_string(act.count);
    if (act.element && act.element->isFocused) {
      std::string held;
      for (const auto& key : act.modifiers) held += keyInPython(key) + ", ";
      return {find(*act.element) + ".send_keys(" + held + keys + ")"};
    }
    const auto pressed = chain(act, ".send_keys(" + keys + ")");
    if (act.element) return {find(*act.element), pressed};
    return {pressed};
  }

  static std::string type(const ExportedAct& act) {
    const auto text =
        act.secret.empty() ? quoted(act.text) : "os.environ[" + quoted(act.secret) + "]";
    const auto keys = ".send_keys(" + text + ")";
    return act.element ? find(*act.element) + keys : "ActionChains(driver)" + keys + ".perform()";
  }

  static std::string check(const ExportedAct& act) {
    const auto way = inPython(*act.element);
    const auto element = "driver.find_element(" + way + ")";
    const auto until = [](const std::string& condition) {
      return "wait_until(driver, lambda driver: " + condition + ")";
    };
    const auto& wanted = act.text;
    if (act.kind == Kind::CheckText) return until(element + ".text == " + quoted(wanted));
    if (act.kind == Kind::CheckPartOfText)
      return until(quoted(wanted) + " in " + element + ".text");
    if (wanted == "gone") return until("not driver.find_elements(" + way + ")");
    if (wanted == "visible") return until(element + ".is_displayed()");
    if (wanted == "enabled") return until(element + ".is_enabled()");
    if (wanted == "disabled") return until("not " + element + ".is_enabled()");
    if (wanted == "checked") return until(element + ".is_selected()");
    if (wanted == "unchecked") return until("not " + element + ".is_selected()");
    if (wanted == "focused") return until(element + ".get_attribute(\"focused\") == \"true\"");
    return "there(driver, " + way + ")";
  }
};

std::vector<std::string> PythonTests::statements(const ExportedAct& act) const {
  const std::string value = act.isOn ? "True" : "False";
  switch (act.kind) {
    case Kind::Click:
      return {click(act)};
    case Kind::LongPress:
      return {chain(act, moveTo(*act.element, act.at) + ".click_and_hold().pause(" +
                             compact(act.seconds) + ").release()")};
    case Kind::Drag:
      return {drag(act)};
    case Kind::Wheel:
      return {wheel(act)};
    case Kind::Hover:
      return {chain(act, moveTo(*act.element, act.at))};
    case Kind::Press:
      return press(act);
    case Kind::Type:
      return {type(act)};
    case Kind::Choose:
      return {"choose(driver, " + find(*act.element) + ", " + quoted(act.text) + ")"};
    case Kind::Switch:
      return {"switch(" + find(*act.element) + ", on=" + value + ")"};
    case Kind::Expand:
      return {"expand(driver, " + find(*act.element) + ", opened=" + value + ")"};
    case Kind::Resize:
      return {"driver.set_window_size(" + pairInPython(act.offset) + ")"};
    case Kind::Close:
      return {"close_window(driver, " + find(*act.element) + ")"};
    case Kind::CheckState:
    case Kind::CheckText:
    case Kind::CheckPartOfText:
      break;
  }
  return {check(act)};
}

std::string PythonTests::opening(const Session& session, const std::string& name,
                                 const std::string& body) const {
  const Json arguments = argumentsOf(session);
  std::string text = "# " + printable(name) + ", recorded " + printable(session.recorded) + R"(
#
# Runs by pytest, with Selenium's client, against `tarni webdriver`, whose address is in
# TARNI_WEBDRIVER unless it is the usual one.
import os
from contextlib import contextmanager

import pytest
from selenium import webdriver
from selenium.webdriver.common.options import ArgOptions
)";
  for (const auto& [word, module] : kImports) {
    if (body.find(word) == std::string::npos) continue;
    text += "from selenium." + std::string(module) + " import " + std::string(word) + "\n";
  }
  return text + R"(
SERVER = os.environ.get("TARNI_WEBDRIVER", "http://127.0.0.1:4723")
PATIENCE = 10  # seconds


@pytest.fixture
def driver():
    options = ArgOptions()
    options.set_capability("appium:app", )" +
         quoted(programOf(session)) + ")\n" +
         (arguments.empty()
              ? ""
              : "    options.set_capability(\"appium:arguments\", " + compact(arguments) + ")\n") +
         R"(    driver = webdriver.Remote(SERVER, options=options)
    yield driver
    driver.quit()

)";
}

}  // namespace

const TestLanguage& pythonTests() {
  static const PythonTests tests;
  return tests;
}

}  // namespace tarni::host
