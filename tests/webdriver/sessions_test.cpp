// What becomes of sessions and their programs, and what bad input does.
#include <signal.h>

#include <filesystem>
#include <future>

#include "tests/support/Files.h"
#include "tests/webdriver/Driver.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

json headless() {
  return {{"appium:app", built("bin/tarni-headless")}, {"tarni:display", "none"}};
}

json asked(const json& capabilities) {
  return {{"capabilities", {{"alwaysMatch", capabilities}}}};
}

TEST(WebDriverSessions, EndWithAllThatIsTheirs) {
  const Folder folder;
  const fs::path& place = folder.path;
  Driver driver({}, {{"TMPDIR", place}});
  const json process = driver.newSession({{"appium:app", built("bin/qt-sample-6")}})
                           .value["capabilities"]["tarni:process"];
  EXPECT_TRUE(isAlive(process));
  EXPECT_FALSE(fs::is_empty(place));
  EXPECT_EQ(driver.inSession("DELETE", "").value, nullptr);
  EXPECT_FALSE(isAlive(process));
  EXPECT_TRUE(fs::is_empty(place));
  EXPECT_EQ(driver.inSession("GET", "/title").error(), "invalid session id");
  auto impatient = headless();
  impatient["appium:newCommandTimeout"] = 1;
  const json other = driver.newSession(impatient).value["capabilities"]["tarni:process"];
  EXPECT_TRUE(eventually([&] { return !isAlive(other); })) << "its client has forgotten it";
  const json third = driver.newSession(headless()).value["capabilities"]["tarni:process"];
  driver.program().signal(SIGKILL);
  EXPECT_TRUE(eventually([&] { return !isAlive(third); })) << "the server was killed";
  EXPECT_TRUE(eventually([&] { return fs::is_empty(place); }));
}

TEST(WebDriverSessions, ThatCannotBeAreToldOf) {
  Driver driver({"--max-sessions", "1"});
  const std::pair<json, const char*> table[] = {
      {{{"browserName", "chrome"}}, "session not created"},
      {{{"platformName", "windows"}, {"appium:app", "x"}}, "session not created"},
      {{{"appium:app", "/no/such/program"}}, "session not created"},
      {{{"appium:app", "false"}, {"appium:arguments", ""}, {"tarni:display", "none"}},
       "session not created"},
      {{{"nothing", 1}}, "invalid argument"},
      {{{"appium:app", 7}}, "invalid argument"},
      {{{"tarni:display", "big"}}, "invalid argument"},
      {{{"tarni:attach", "nobody"}}, "session not created"},
  };
  for (const auto& [capabilities, error] : table) {
    EXPECT_EQ(driver.ask("POST", "/session", asked(capabilities).dump()).error(), error)
        << capabilities;
  }
  for (const char* const body :
       {"", "nix", "[]", "7", R"({"capabilities":7})", R"({"capabilities":{"firstMatch":[]}})"}) {
    EXPECT_EQ(driver.ask("POST", "/session", body).error(), "invalid argument") << body;
  }
  driver.newSession(headless());
  EXPECT_EQ(driver.ask("POST", "/session", asked(headless()).dump()).error(),
            "session not created");
  EXPECT_EQ(driver.ask("GET", "/status").value["ready"], false);
  std::string value;
  value.resize(17'000'000, 'a');
  const json tooLong = {{"using", "id"}, {"value", value}};
  for (const auto& body : {std::string("{"), tooLong.dump()}) {
    EXPECT_EQ(driver.inSession("POST", "/element", body).error(), "invalid argument");
  }
  EXPECT_EQ(driver.inSession("GET", "/timeouts").status, 200) << "it is not lost";
}

TEST(WebDriverSessions, WhoseProgramDiesAreOverAndSaySo) {
  Driver driver;
  const json process = driver.newSession(headless()).value["capabilities"]["tarni:process"];
  kill(process.get<pid_t>(), SIGKILL);
  EXPECT_EQ(driver.inSession("GET", "/title").error(), "unknown error");
  EXPECT_EQ(driver.inSession("GET", "/title").error(), "invalid session id");
  EXPECT_EQ(driver.ask("GET", "/status").value["ready"], true);
}

TEST(WebDriverSessions, ThatAreAskedForAgainWhileTheyStartAreOneAndEndInAWaitWithTheServer) {
  Driver driver;
  const auto ask = [&driver] {
    httplib::Client client("127.0.0.1", driver.port());
    const auto answer = client.Post("/session", {{"X-Idempotency-Key", "7"}},
                                    asked(headless()).dump(), "application/json");
    return json::parse(answer->body)["value"]["sessionId"].get<std::string>();
  };
  auto first = std::async(std::launch::async, ask);
  const auto session = "/session/" + ask();
  EXPECT_EQ("/session/" + first.get(), session);
  driver.ask("POST", session + "/timeouts", R"({"implicit":9007199254740991})");
  auto waiting = std::async(std::launch::async, [&] {
    httplib::Client client("127.0.0.1", driver.port());
    client.set_read_timeout(kPatience);
    client.Post(session + "/element", R"({"using":"id","value":"nix"})", "application/json");
  });
  EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
  driver.program().signal(SIGTERM);
  EXPECT_EQ(driver.program().wait(kPatience), 0);
}

TEST(WebDriverSessions, HaveTwoFingersThatMoveInStep) {
  Driver driver;
  driver.newSession({{"appium:app", "/usr/bin/python3"},
                     {"appium:arguments", {std::string(TARNI_TEST_FOLDER) + "/fingers.py"}}});
  const auto paper = "/element/" + driver.element("id", "paper");
  const auto finger = [](const char* id, int from, int to) {
    const auto move = [](int y, int duration) {
      return json{{"type", "pointerMove"}, {"x", 300}, {"y", y}, {"duration", duration}};
    };
    return json{
        {"type", "pointer"},
        {"id", id},
        {"parameters", {{"pointerType", "touch"}}},
        {"actions",
         {move(from, 0), {{"type", "pointerDown"}}, move(to, 50), {{"type", "pointerUp"}}}}};
  };
  const json apart = {{"actions", {finger("a", 100, 50), finger("b", 200, 350)}}};
  EXPECT_EQ(driver.inSession("POST", "/actions", apart.dump()).value, nullptr);
  EXPECT_EQ(driver.inSession("GET", paper + "/text").value, "3.0 times, 0.0 round");
  const json turn = {{"script", "mobile: rotateElement"}, {"args", {{{"rotation", 1.5}}}}};
  EXPECT_EQ(driver.inSession("POST", "/execute/sync", turn.dump()).value, nullptr);
  EXPECT_EQ(driver.inSession("GET", paper + "/text").value, "1.0 times, 1.5 round");
}

}  // namespace
}  // namespace tarni::test
