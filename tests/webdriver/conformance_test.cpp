// The standard and the dialect, as a table of commands and what comes of them, on every backend.
#include <gmock/gmock.h>

#include <filesystem>
#include <optional>
#include <ostream>

#include "tests/support/SessionWire.h"
#include "tests/webdriver/Driver.h"

namespace tarni::test {
namespace {

using nlohmann::json;

struct Sample {
  std::string name;
  json capabilities;
  std::string platform = "linux";
};
void PrintTo(const Sample& sample, std::ostream* output) {
  *output << sample.name;
}

json capabilitiesOf(const std::string& program) {
  return {{"appium:app", built("bin/" + program)},
          {"appium:automationName", "tarni"},
          {"platformName", "Linux"},
          {"other:vendor", 7},
          {"appium:environment", {{"QT_QUICK_BACKEND", "software"}}}};
}

// In a path <User name> stands for the identifier of the element that is called so, in a body for a
// reference to it, and in a value "*" for anything. An error is wanted by its name.
struct Row {
  const char* method;
  const char* path;
  const char* body;
  const char* wanted;
};

constexpr Row kTable[] = {
    // Sessions
    {"GET", "/timeouts", "", R"({"implicit":0,"pageLoad":300000,"script":30000})"},
    {"POST", "/timeouts", R"({"implicit":-1})", "invalid argument"},
    {"POST", "/timeouts", R"({"implicit":1.5})", "invalid argument"},
    {"POST", "/timeouts", R"({"script":null,"implicit":100})", "null"},
    {"GET", "/timeouts", "", R"({"implicit":100,"pageLoad":300000,"script":null})"},
    {"POST", "/timeouts", R"({"implicit":0})", "null"},
    {"GET", "/appium/settings", "", "{}"},
    {"POST", "/appium/settings", R"({"settings":{"a":1}})", "null"},
    {"POST", "/appium/settings", R"({"settings":[]})", "invalid argument"},
    {"GET", "/appium/settings", "", R"({"a":1})"},
    {"GET", "/contexts", "", R"(["NATIVE_APP"])"},
    {"GET", "/appium/context", "", R"("NATIVE_APP")"},
    {"POST", "/context", R"({"name":"WEBVIEW_7"})", "no such window"},
    {"POST", "/se/file", R"({"file":"x"})", "unknown command"},
    {"GET", "/cookie", "", "unsupported operation"},
    {"GET", "/nix", "", "unknown command"},
    {"DELETE", "/source", "", "unknown method"},
    // Finding
    {"POST", "/element", R"({"using":"css selector","value":"[placeholder='User name']"})", "*"},
    {"POST", "/element", R"({"using":"css selector","value":"UIView > UITextField, nix"})", "*"},
    {"POST", "/element", R"({"using":"css selector","value":"a:hover"})", "invalid selector"},
    {"POST", "/element", R"({"using":"css selector","value":"[tet='OK']"})", "invalid selector"},
    {"POST", "/element", R"({"using":"xpath","value":"//*[@text='Log in']"})", "*"},
    {"POST", "/element", R"({"using":"xpath","value":"//*["})", "invalid selector"},
    {"POST", "/element", R"({"using":"xpath","value":"//@text"})", "invalid selector"},
    {"POST", "/element", R"({"using":"xpath","value":"/"})", "invalid selector"},
    {"POST", "/element", R"({"using":"-ios predicate string",
        "value":"type == 'UIButton' AND text CONTAINS[c] 'LOG' AND NOT enabled == 0"})",
     "*"},
    {"POST", "/element", R"({"using":"-ios predicate string","value":"tet == 'OK'"})",
     "invalid selector"},
    {"POST", "/element", R"({"using":"-ios predicate string","value":"text =="})",
     "invalid selector"},
    {"POST", "/element", R"({"using":"-ios class chain",
        "value":"**/UITableView/**/UITableViewCell[`text == 'Row 2'`][-1]"})",
     "*"},
    {"POST", "/element", R"({"using":"partial link text","value":"og i"})", "*"},
    {"POST", "/element", R"({"using":"tag name","value":"UISwitch"})", "*"},
    {"POST", "/element", R"({"using":"accessibility id","value":"nix"})", "no such element"},
    {"POST", "/element", R"({"using":"-image","value":"x"})", "invalid selector"},
    {"POST", "/element", R"({"using":"id"})", "invalid argument"},
    {"POST", "/elements", R"({"using":"id","value":"nix"})", "[]"},
    {"POST", "/element/<UITableView>/element", R"({"using":"link text","value":"Row 3"})", "*"},
    {"POST", "/element/<UITableView>/elements", R"({"using":"xpath","value":".//UISwitch"})", "[]"},
    {"POST", "/element/nix/elements", R"({"using":"id","value":"a"})", "no such element"},
    // Reading and acting
    {"GET", "/element/<User name>/displayed", "", "true"},
    {"GET", "/element/<User name>/enabled", "", "true"},
    {"GET", "/element/<User name>/name", "", R"("UITextField")"},
    {"GET", "/element/<User name>/attribute/placeholder", "", R"("User name")"},
    {"GET", "/element/<User name>/attribute/nix", "", "null"},
    {"GET", "/element/999999/text", "", "no such element"},
    {"POST", "/element/<User name>/value", R"({"text":"Ada+Ä 字"})", "null"},
    {"GET", "/element/<User name>/text", "", R"("Ada+Ä 字")"},
    {"POST", "/element/<User name>/value", R"({"value":["\ue003","!"]})", "null"},
    {"GET", "/element/<User name>/property/value", "", R"("Ada+Ä !")"},
    {"POST", "/element/<User name>/clear", "{}", "null"},
    {"GET", "/element/<User name>/text", "", R"("")"},
    {"POST", "/element/<UISwitch>/clear", "{}", "invalid element state"},
    {"POST", "/element/<User name>/value", R"({"text":"\ue008g\ue000race\ue007"})", "null"},
    {"GET", "/element/active", "", "*"},
    {"POST", "/element/<Log in>/click", "{}", "null"},
    {"POST", "/element", R"({"using":"link text","value":"Hello, Grace"})", "*"},
    {"GET", "/element/<UISwitch>/selected", "", "false"},
    {"POST", "/execute/sync", R"({"script":"mobile:tap","args":[{"elementId":"<UISwitch>"}]})",
     "null"},
    {"GET", "/element/<UISwitch>/selected", "", "true"},
    // Actions
    {"POST", "/actions", R"({"actions":[
        {"type":"key","id":"k","actions":[{"type":"pause"},{"type":"pause","duration":30}]},
        {"type":"pointer","id":"f","parameters":{"pointerType":"touch"},"actions":[
          {"type":"pointerMove","duration":30,"x":0,"y":0,"origin":{
            "element-6066-11e4-a52e-4f735466cecf":"<UISwitch>"}},
          {"type":"pointerDown","button":0},{"type":"pointerUp","button":0}]}]})",
     "null"},
    {"GET", "/element/<UISwitch>/selected", "", "false"},
    {"POST", "/actions", R"({"actions":[{"type":"pointer","id":"m","actions":[
        {"type":"pointerMove","x":9000,"y":9000}]}]})",
     "move target out of bounds"},
    {"POST", "/actions", R"({"actions":[{"type":"nix","id":"m","actions":[]}]})",
     "invalid argument"},
    {"POST", "/actions", R"({"actions":7})", "invalid argument"},
    {"POST", "/actions",
     R"({"actions":[{"type":"key","id":"k","actions":[{"type":"keyDown","value":"ab"}]}]})",
     "invalid argument"},
    {"DELETE", "/actions", "", "null"},
    // Scripts that clients send for commands
    {"POST", "/execute/sync", R"({"script":"/* isDisplayed */return (x);","args":[{
        "element-6066-11e4-a52e-4f735466cecf":"<Log in>"}]})",
     "true"},
    {"POST", "/execute/sync", R"({"script":"/* getAttribute */return (x);","args":[{
        "element-6066-11e4-a52e-4f735466cecf":"<Log in>","ELEMENT":"x"},"text"]})",
     R"("Log in")"},
    {"POST", "/execute/sync", R"({"script":"return 1","args":[]})", "unknown method"},
    {"POST", "/execute/sync", R"({"script":"mobile: pinch","args":[{}]})", "invalid argument"},
    {"POST", "/execute/sync", R"({"script":"mobile: tap","args":[{"x":"1","y":1}]})",
     "invalid argument"},
    {"POST", "/execute/sync", R"({"script":"mobile: nix","args":[]})", "unknown method"},
    // Windows, pictures, alerts
    {"GET", "/screenshot", "", "*"},
    {"GET", "/element/<Log in>/screenshot", "", "*"},
    {"POST", "/window", R"({"handle":"99999"})", "no such window"},
    {"POST", "/window", R"({"handle":"1x"})", "no such window"},
    {"POST", "/window/rect", R"({"width":-1,"height":5})", "invalid argument"},
    {"GET", "/alert/text", "", "no such alert"},
    {"POST", "/alert/accept", "{}", "no such alert"},
};

class WebDriver : public testing::TestWithParam<Sample> {
 protected:
  static std::string strategyFor(const std::string& name) {
    return name.starts_with("UI") ? "class name"
           : name == "User name"  ? "css selector"
                                  : "link text";
  }
  std::string identifier(const std::string& name) {
    const auto strategy = strategyFor(name);
    return driver_.element(strategy,
                           strategy == "css selector" ? "[placeholder='" + name + "']" : name);
  }
  std::string resolved(std::string text) {
    for (auto at = text.find('<'); at != std::string::npos; at = text.find('<')) {
      const auto end = text.find('>', at);
      text.replace(at, end + 1 - at, identifier(text.substr(at + 1, end - at - 1)));
    }
    return text;
  }

  // The first four of them, each asked for by its number.
  json numbered(const std::string& xpath) {
    json answers;
    for (int number = 1; number <= 4; ++number) {
      const json body = {{"using", "xpath"},
                         {"value", "(" + xpath + ")[" + std::to_string(number) + "]"}};
      const auto answer = driver_.inSession("POST", "/element", body.dump());
      answers.push_back(answer.status == 200 ? answer.value : json(answer.error()));
    }
    return answers;
  }

  // One that runs on a device is attached to.
  void begin() {
    auto capabilities = GetParam().capabilities;
    if (GetParam().platform == "iOS") {
      device_.emplace(std::vector{built("bin/ios-sample")},
                      Program::Environment{{"TARNI_SESSION", folder_.socket()}});
      eventually([this] { return std::filesystem::exists(folder_.socket()); });
      capabilities["tarni:attach"] = folder_.socket();
    }
    const auto made = driver_.newSession(capabilities).value["capabilities"];
    EXPECT_EQ(made["platformName"], GetParam().platform);
    EXPECT_EQ(made["other:vendor"], 7);
    EXPECT_FALSE(made.contains("browserName"));
  }

  const SessionFolder folder_;
  std::optional<Program> device_;
  Driver driver_;
};

const Sample kSamples[] = {{"Headless", capabilitiesOf("tarni-headless")},
                           {"Qt5", capabilitiesOf("qt-sample-5")},
                           {"Qt6", capabilitiesOf("qt-sample-6")},
                           {"Quick6", capabilitiesOf("quick-sample-6")},
                           {"iOS", {{"platformName", "iOS"}, {"other:vendor", 7}}, "iOS"}};
INSTANTIATE_TEST_SUITE_P(On, WebDriver, testing::ValuesIn(kSamples),
                         [](const auto& info) { return info.param.name; });

TEST_P(WebDriver, AnswersAsTheStandardSays) {
  begin();
  for (const auto& [method, path, body, wanted] : kTable) {
    SCOPED_TRACE(std::string(method) + " " + path + " " + body);
    const bool isSelector =
        std::string(path).ends_with("element") || std::string(path).ends_with("elements");
    const auto answer =
        driver_.inSession(method, resolved(path), isSelector ? body : resolved(body));
    const json value = json::parse(wanted, nullptr, false);
    if (wanted == std::string("*")) {
      EXPECT_EQ(answer.status, 200) << answer.value;
    } else if (value.is_discarded()) {
      EXPECT_EQ(answer.error(), wanted) << answer.value;
    } else {
      EXPECT_EQ(answer.value, value);
    }
  }
}

TEST_P(WebDriver, HasADialogForAnAlertAndOnePictureOfThePlacesThatItTells) {
  begin();
  const auto details =
      driver_.element("-ios predicate string", "text BEGINSWITH 'Details' AND type == 'UIButton'");
  const auto rect = driver_.inSession("GET", "/element/" + details + "/rect").value;
  const auto window = driver_.inSession("GET", "/window/rect").value;
  EXPECT_LE(rect["x"].get<int>() + rect["width"].get<int>(), window["width"]);
  const std::string xml = driver_.inSession("GET", "/source").value;
  EXPECT_THAT(xml,
              testing::HasSubstr("x=\"" + rect["x"].dump() + "\" y=\"" + rect["y"].dump() + "\""));
  const auto behind = driver_.element("class name", "UIButton");
  driver_.inSession("POST", "/element/" + details + "/click");
  EXPECT_THAT(driver_.inSession("GET", "/alert/text").value.dump(), testing::HasSubstr("Really?"));
  const auto behindIt = driver_.inSession("GET", "/element/" + details + "/rect").value;
  const auto attribute = [&](const std::string& name) {
    return driver_.inSession("GET", "/element/" + details + "/attribute/" + name).value;
  };
  EXPECT_EQ(attribute("x"), behindIt["x"].dump());
  EXPECT_EQ(attribute("y"), behindIt["y"].dump());
  EXPECT_TRUE(attribute("index").is_string());
  const bool isWindow = driver_.inSession("GET", "/window/handles").value.size() > 1;
  for (const auto& [using_, value] :
       {std::pair{"class name", "UIButton"}, {"xpath", "//UIButton"}}) {
    EXPECT_EQ(driver_.element(using_, value) != behind, isWindow) << "of what can be reached";
  }
  for (const std::string name : {"UIButton", "uibutton", "UISwitch"}) {
    EXPECT_EQ(numbered("//" + name), numbered("//" + name + "[true()]")) << name;
  }
  EXPECT_EQ(driver_.inSession("POST", "/alert/accept").value, nullptr);
  driver_.inSession("POST", "/timeouts", R"({"implicit":5000})");
  EXPECT_NE(driver_.element("link text", "Accepted"), "");
}

}  // namespace
}  // namespace tarni::test
