// Tests for the test runner of Node, with webdriverio.
#include <nlohmann/json.hpp>

#include "host/export/LocatorCode.h"
#include "host/export/TestLanguage.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"

namespace tarni::host {

namespace {

using Kind = ExportedAct::Kind;
using Helper = TestLanguage::Helper;

constexpr Helper kJavaScriptHelpers[] = {
    {"step", R"(
// Names the step that fails.
async function step(name, act) {
  try {
    await act();
  } catch (error) {
    throw new Error(`${name}: ${error.message}`, { cause: error });
  }
}
)"},
    {"lastStep", R"(
// The program may end by it, and with it the session.
async function lastStep(name, act) {
  await step(name, async () => {
    try {
      await act();
    } catch (error) {
      if (!/invalid session id/.test(`${error.name} ${error.message}`)) throw error;
    }
  });
}
)"},
    {"there", R"(
// The element, once it is there, in sight or not.
async function there(selector) {
  const element = await browser.$(selector);
  await element.waitForExist();
  return element;
}
)"},
    {"find", R"(
// The element, once it is shown and enabled.
async function find(selector) {
  const element = await browser.$(selector);
  await element.waitForDisplayed();
  await element.waitForEnabled();
  return element;
}
)"},
    {"press", R"(
// Keys where the focus is, with those of `held` down.
async function press(key, { held = [], count = 1 } = {}) {
  const keys = browser.action("key");
  for (const one of held) keys.down(one);
  for (let turn = 0; turn < count; ++turn) keys.down(key).up(key);
  for (const one of held.toReversed()) keys.up(one);
  await keys.perform();
}
)"},
    {"holding", R"(
// Does it while the keys are down.
async function holding(keys, act) {
  const down = browser.action("key");
  for (const key of keys) down.down(key);
  await down.perform(true);
  await act();
  await browser.releaseActions();
}
)"},
    {"call", R"(
// Asks the program itself for what WebDriver has no command for.
async function call(method, params) {
  await browser.execute("tarni: call", { method, params });
}
)"},
    {"focus", R"(
async function focus(element) {
  const state = await element.getAttribute("focused");
  if (state !== "true") await call("element.focus", { element: Number(element.elementId) });
}
)"},
    {"choose", R"(
async function choose(element, value) {
  await call("element.setValue", { element: Number(element.elementId), value });
}
)"},
    {"switchTo", R"(
async function switchTo(element, on) {
  if ((await element.isSelected()) !== on) await element.click();
}
)"},
    {"expand", R"(
async function expand(element, opened) {
  const state = await element.getAttribute("expanded");
  if (state === null) {
    await element.click(); // an arrow beside the node
  } else if ((state === "true") !== opened) {
    await call("element.setExpanded", { element: Number(element.elementId), expanded: opened });
  }
}
)"},
    {"closeWindow", R"(
async function closeWindow(window) {
  await call("window.close", { window: Number(window.elementId) });
}
)"},
};

std::string keyInJavaScript(const std::string& key) {
  const auto* const named = namedKey(key);
  return named ? "Key." + std::string(named->inJavaScript) : quoted(key);
}

std::string pairInJavaScript(const ExportedAct::Offset& offset, const char* x, const char* y) {
  return std::string(x) + ": " + std::to_string(offset.x) + ", " + y + ": " +
         std::to_string(offset.y);
}

class JavaScriptTests : public TestLanguage {
 public:
  std::vector<std::string> statements(const ExportedAct& act) const override;

  std::span<const Helper> helpers() const override { return kJavaScriptHelpers; }

  std::string opening(const Session& session, const std::string& name,
                      const std::string& body) const override;

  std::string test(const std::string& name, const std::string& steps) const override {
    return "\ntest(" + quoted(name) + ", async () => {\n" + steps + "});\n";
  }

  std::string step(const std::string& words, const std::vector<std::string>& statements,
                   bool isLast) const override {
    auto text = std::string("  await ") + (isLast ? "lastStep(" : "step(") + quoted(words) +
                ", async () => {\n";
    for (const auto& statement : statements) text += "    " + statement + "\n";
    return text + "  });\n";
  }

 private:
  static std::string find(const ExportedElement& element) {
    return std::string("await ") + (element.isShown ? "find(" : "there(") + inJavaScript(element) +
           ")";
  }

  static std::string on(const ExportedElement& element) { return "(" + find(element) + ")"; }

  static std::string moveTo(const ExportedElement& element,
                            const std::optional<ExportedAct::Offset>& at) {
    const auto place = at ? ", " + pairInJavaScript(*at, "x", "y") : "";
    return ".move({ origin: " + find(element) + place + " })";
  }

  static std::string keys(const std::vector<std::string>& names) {
    std::string list;
    for (const auto& name : names) addWord(list, keyInJavaScript(name));
    return "[" + list + "]";
  }

  static std::string chain(const ExportedAct& act, const std::string& type,
                           const std::string& actions) {
    const auto done = "browser.action(\"" + type + "\")" + actions + ".perform()";
    if (act.modifiers.empty()) return "await " + done + ";";
    return "await holding(" + keys(act.modifiers) + ", async () => " + done + ");";
  }

  static std::string button(const ExportedAct& act) {
    const bool isUsual = act.button == "left";
    if (act.button == "back" || act.button == "forward") {
      return act.button == "back" ? "{ button: 3 }" : "{ button: 4 }";
    }
    return isUsual ? "" : "{ button: " + quoted(act.button) + " }";
  }

  static std::string click(const ExportedAct& act) {
    if (act.isPlainClick()) return "await " + on(*act.element) + ".click();";
    auto actions = moveTo(*act.element, act.at);
    for (int turn = 0; turn < act.count; ++turn) {
      actions += ".down(" + button(act) + ").up(" + button(act) + ")";
    }
    return chain(act, "pointer", actions);
  }

  static std::string drag(const ExportedAct& act) {
    auto actions = moveTo(*act.element, act.at) + ".down(" + button(act) + ")";
    for (const auto& offset : act.way) {
      actions += ".move({ origin: \"pointer\", " + pairInJavaScript(offset, "x", "y") +
                 ", duration: 250 })";
    }
    if (act.target) {
      const auto at = act.targetAt ? ", " + pairInJavaScript(*act.targetAt, "x", "y") : "";
      actions += ".move({ origin: " + find(*act.target) + at + ", duration: 250 })";
    }
    return chain(act, "pointer", actions + ".up(" + button(act) + ")");
  }

  static std::string wheel(const ExportedAct& act) {
    const auto at = act.at ? ", " + pairInJavaScript(*act.at, "x", "y") : "";
    return chain(act, "wheel",
                 ".scroll({ origin: " + find(*act.element) + at + ", " +
                     pairInJavaScript(act.offset, "deltaX", "deltaY") + ", duration: 0 })");
  }

  // Into what was found with the focus; elsewhere the focus decides.
  static std::vector<std::string> press(const ExportedAct& act) {
    std::string options;
    if (!act.modifiers.empty()) options = "held: " + keys(act.modifiers);
    if (act.count > 1) addWord(options, "count: " + std::to_string(act.count));
    if (!options.empty()) options.insert(0, ", { ").append(" }");
    const auto pressed = "await press(" + keyInJavaScript(act.text) + options + ");";
    if (!act.element) return {pressed};
    return {
        (act.element->isFocused ? "await focus(" + find(*act.element) + ")" : find(*act.element)) +
            ";",
        pressed};
  }

  static std::string type(const ExportedAct& act) {
    const auto text = act.secret.empty() ? quoted(act.text) : "process.env." + act.secret;
    if (!act.element) return "await browser.keys([..." + text + "]);";
    return "await " + on(*act.element) + ".addValue(" + text + ");";
  }

  static std::string check(const ExportedAct& act) {
    const auto element = "browser.$(" + inJavaScript(*act.element) + ")";
    const auto until = [](const std::string& condition) {
      return "await browser.waitUntil(async () => " + condition + ");";
    };
    const auto& wanted = act.text;
    const auto shown = "await " + element + ".getText()";
    if (act.kind == Kind::CheckText) return until("(" + shown + ") === " + quoted(wanted));
    if (act.kind == Kind::CheckPartOfText) {
      return until("(" + shown + ").includes(" + quoted(wanted) + ")");
    }
    if (wanted == "gone") return "await " + element + ".waitForExist({ reverse: true });";
    if (wanted == "visible") return "await " + element + ".waitForDisplayed();";
    if (wanted == "enabled") return "await " + element + ".waitForEnabled();";
    if (wanted == "disabled") return "await " + element + ".waitForEnabled({ reverse: true });";
    if (wanted == "checked") return until(element + ".isSelected()");
    if (wanted == "unchecked") return until("!(await " + element + ".isSelected())");
    if (wanted == "focused") {
      return until("(await " + element + ".getAttribute(\"focused\")) === \"true\"");
    }
    return "await there(" + inJavaScript(*act.element) + ");";
  }
};

std::vector<std::string> JavaScriptTests::statements(const ExportedAct& act) const {
  const std::string value = act.isOn ? "true" : "false";
  switch (act.kind) {
    case Kind::Click:
      return {click(act)};
    case Kind::LongPress:
      return {chain(act, "pointer",
                    moveTo(*act.element, act.at) + ".down(" + button(act) + ").pause(" +
                        compact(act.seconds * 1'000) + ").up(" + button(act) + ")")};
    case Kind::Drag:
      return {drag(act)};
    case Kind::Wheel:
      return {wheel(act)};
    case Kind::Hover:
      return {chain(act, "pointer", moveTo(*act.element, act.at))};
    case Kind::Press:
      return press(act);
    case Kind::Type:
      return {type(act)};
    case Kind::Choose:
      return {"await choose(" + find(*act.element) + ", " + quoted(act.text) + ");"};
    case Kind::Switch:
      return {"await switchTo(" + find(*act.element) + ", " + value + ");"};
    case Kind::Expand:
      return {"await expand(" + find(*act.element) + ", " + value + ");"};
    case Kind::Resize:
      return {"await browser.setWindowRect(null, null, " + std::to_string(act.offset.x) + ", " +
              std::to_string(act.offset.y) + ");"};
    case Kind::Close:
      return {"await closeWindow(" + find(*act.element) + ");"};
    case Kind::CheckState:
    case Kind::CheckText:
    case Kind::CheckPartOfText:
      break;
  }
  return {check(act)};
}

std::string JavaScriptTests::opening(const Session& session, const std::string& name,
                                     const std::string& body) const {
  const bool usesKeys = body.find("Key.") != std::string::npos;
  const Json arguments = argumentsOf(session);
  return "// " + printable(name) + ", recorded " + printable(session.recorded) + R"(
//
// Runs by `node --test`, with webdriverio, against `tarni webdriver`, whose address is in
// TARNI_WEBDRIVER unless it is the usual one.
import { after, before, test } from "node:test";
import { )" +
         (usesKeys ? "Key, " : "") +
         R"(remote } from "webdriverio";

const { hostname, port } = new URL(process.env.TARNI_WEBDRIVER ?? "http://127.0.0.1:4723");
const capabilities = {
  "platformName": "linux",
  "appium:app": )" +
         quoted(programOf(session)) + ",\n" +
         (arguments.empty() ? "" : "  \"appium:arguments\": " + compact(arguments) + ",\n") + R"(};
let browser;

before(async () => {
  browser = await remote({
    hostname, port: Number(port), path: "/", logLevel: "error", waitforTimeout: 10_000, capabilities,
  });
});
after(() => browser.deleteSession());
)";
}

}  // namespace

const TestLanguage& javaScriptTests() {
  static const JavaScriptTests tests;
  return tests;
}

}  // namespace tarni::host
