// Tests for the test runner of Node, with webdriverio.
#include <nlohmann/json.hpp>

#include "host/export/LocatorCode.h"
#include "host/export/TestLanguage.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"

namespace tarni::host {

namespace {

using Kind = Deed::Kind;
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

std::string pairInJavaScript(const Deed::Offset& offset, const char* x, const char* y) {
  return std::string(x) + ": " + std::to_string(offset.x) + ", " + y + ": " +
         std::to_string(offset.y);
}

class JavaScriptTests : public TestLanguage {
 public:
  std::vector<std::string> statements(const Deed& deed) const override;

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

  static std::string moveTo(const ExportedElement& element, const std::optional<Deed::Offset>& at) {
    const auto place = at ? ", " + pairInJavaScript(*at, "x", "y") : "";
    return ".move({ origin: " + find(element) + place + " })";
  }

  static std::string keys(const std::vector<std::string>& names) {
    std::string list;
    for (const auto& name : names) addWord(list, keyInJavaScript(name));
    return "[" + list + "]";
  }

  static std::string chain(const Deed& deed, const std::string& type, const std::string& actions) {
    const auto done = "browser.action(\"" + type + "\")" + actions + ".perform()";
    if (deed.modifiers.empty()) return "await " + done + ";";
    return "await holding(" + keys(deed.modifiers) + ", async () => " + done + ");";
  }

  static std::string button(const Deed& deed) {
    const bool isUsual = deed.button == "left";
    if (deed.button == "back" || deed.button == "forward") {
      return deed.button == "back" ? "{ button: 3 }" : "{ button: 4 }";
    }
    return isUsual ? "" : "{ button: " + quoted(deed.button) + " }";
  }

  static std::string click(const Deed& deed) {
    if (deed.isPlainClick()) return "await " + on(*deed.element) + ".click();";
    auto actions = moveTo(*deed.element, deed.at);
    for (int turn = 0; turn < deed.count; ++turn) {
      actions += ".down(" + button(deed) + ").up(" + button(deed) + ")";
    }
    return chain(deed, "pointer", actions);
  }

  static std::string drag(const Deed& deed) {
    auto actions = moveTo(*deed.element, deed.at) + ".down(" + button(deed) + ")";
    for (const auto& offset : deed.way) {
      actions += ".move({ origin: \"pointer\", " + pairInJavaScript(offset, "x", "y") +
                 ", duration: 250 })";
    }
    if (deed.target) {
      const auto at = deed.targetAt ? ", " + pairInJavaScript(*deed.targetAt, "x", "y") : "";
      actions += ".move({ origin: " + find(*deed.target) + at + ", duration: 250 })";
    }
    return chain(deed, "pointer", actions + ".up(" + button(deed) + ")");
  }

  static std::string wheel(const Deed& deed) {
    const auto at = deed.at ? ", " + pairInJavaScript(*deed.at, "x", "y") : "";
    return chain(deed, "wheel",
                 ".scroll({ origin: " + find(*deed.element) + at + ", " +
                     pairInJavaScript(deed.offset, "deltaX", "deltaY") + ", duration: 0 })");
  }

  // Into what was found with the focus; elsewhere the focus decides.
  static std::vector<std::string> press(const Deed& deed) {
    std::string options;
    if (!deed.modifiers.empty()) options = "held: " + keys(deed.modifiers);
    if (deed.count > 1) addWord(options, "count: " + std::to_string(deed.count));
    if (!options.empty()) options.insert(0, ", { ").append(" }");
    const auto pressed = "await press(" + keyInJavaScript(deed.text) + options + ");";
    if (!deed.element) return {pressed};
    return {(deed.element->isFocused ? "await focus(" + find(*deed.element) + ")"
                                     : find(*deed.element)) +
                ";",
            pressed};
  }

  static std::string type(const Deed& deed) {
    const auto text = deed.secret.empty() ? quoted(deed.text) : "process.env." + deed.secret;
    if (!deed.element) return "await browser.keys([..." + text + "]);";
    return "await " + on(*deed.element) + ".addValue(" + text + ");";
  }

  static std::string check(const Deed& deed) {
    const auto element = "browser.$(" + inJavaScript(*deed.element) + ")";
    const auto until = [](const std::string& condition) {
      return "await browser.waitUntil(async () => " + condition + ");";
    };
    const auto& wanted = deed.text;
    const auto shown = "await " + element + ".getText()";
    if (deed.kind == Kind::CheckText) return until("(" + shown + ") === " + quoted(wanted));
    if (deed.kind == Kind::CheckPartOfText) {
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
    return "await there(" + inJavaScript(*deed.element) + ");";
  }
};

std::vector<std::string> JavaScriptTests::statements(const Deed& deed) const {
  const std::string value = deed.isOn ? "true" : "false";
  switch (deed.kind) {
    case Kind::Click:
      return {click(deed)};
    case Kind::LongPress:
      return {chain(deed, "pointer",
                    moveTo(*deed.element, deed.at) + ".down(" + button(deed) + ").pause(" +
                        compact(deed.seconds * 1'000) + ").up(" + button(deed) + ")")};
    case Kind::Drag:
      return {drag(deed)};
    case Kind::Wheel:
      return {wheel(deed)};
    case Kind::Hover:
      return {chain(deed, "pointer", moveTo(*deed.element, deed.at))};
    case Kind::Press:
      return press(deed);
    case Kind::Type:
      return {type(deed)};
    case Kind::Choose:
      return {"await choose(" + find(*deed.element) + ", " + quoted(deed.text) + ");"};
    case Kind::Switch:
      return {"await switchTo(" + find(*deed.element) + ", " + value + ");"};
    case Kind::Expand:
      return {"await expand(" + find(*deed.element) + ", " + value + ");"};
    case Kind::Resize:
      return {"await browser.setWindowRect(null, null, " + std::to_string(deed.offset.x) + ", " +
              std::to_string(deed.offset.y) + ");"};
    case Kind::Close:
      return {"await closeWindow(" + find(*deed.element) + ");"};
    case Kind::CheckState:
    case Kind::CheckText:
    case Kind::CheckPartOfText:
      break;
  }
  return {check(deed)};
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
