// Host tools that go on and on: commands and taps over both ways in, with windows that come and go,
// the answer to every one of them checked; the program's memory as flat at the end as after the
// warm-up, and its descriptors as many. And peers that are cut off anywhere in what they say.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <utility>

#include "tests/support/Program.h"
#include "tests/support/SessionWire.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using nlohmann::json;

struct Size {
  long commands = 0;
  long taps = 0;
  long tapsByPort = 0;   // of these, over the fixed port
  long tapsATyping = 1;  // of the others: how many for each text that is typed
};

bool is(const char* kind) {
  const char* const asked = std::getenv("TARNI_SOAK");
  return asked && std::string(asked) == kind;
}

bool isFull() {
  return is("full");
}

// In percent. A sanitizer keeps back what the program frees: there the answers alone count.
double acceptedGrowth() {
  if (is("answers")) return std::numeric_limits<double>::infinity();
  return isFull() ? 1.0 : 3.0;
}

double megabytes(long kilobytes) {
  return static_cast<double>(kilobytes) / 1024;
}

class Soak : public testing::Test {
 protected:
  void start(const std::vector<std::string>& command, Program::Environment environment) {
    environment["TARNI_LOG"] = "/dev/null";
    environment["TARNI_SESSION"] = folder_.socket();
    // What is freed goes back at once, so that resident memory is what the program holds and not
    // what its allocator keeps at hand: a picture more or less would be five percent.
    environment["MALLOC_ARENA_MAX"] = "1";
    environment["MALLOC_MMAP_THRESHOLD_"] = "65536";
    environment["MALLOC_TRIM_THRESHOLD_"] = "65536";
    program_.reset();
    program_ = std::make_unique<Program>(command, environment);
  }

  // Taps and other commands take turns, in the proportion of the sizes.
  void soak(const std::vector<std::string>& command, const Program::Environment& environment,
            Size size) {
    start(command, environment);
    playback_ = std::make_unique<Playback>();
    session_ = std::make_unique<SessionWire>(folder_.socket());
    size_ = size;
    // What is kept for good comes first: pools, caches, fonts; so many views that have gone that
    // they are forgotten. A short run is half warm-up.
    const int warm = isFull() ? 3 : 5;
    for (int look = 0; look < (isFull() ? 200 : 5); ++look) lookAtAll();
    for (int window = 0; window < (isFull() ? 800 : 10); ++window) showWindow();
    runTo(warm);
    const long before = heldKilobytes();
    const long resident = residentKilobytes();
    const long descriptors = descriptorCount();
    std::printf("%s: after the warm-up %.1f MB\n", name(), megabytes(resident));
    for (int tenth = warm + 1; tenth <= 10; ++tenth) {
      runTo(tenth);
      std::printf("%s: %ld of %ld commands, %ld of %ld taps, %.1f MB\n", name(), done_.commands,
                  size.commands, done_.taps, size.taps, megabytes(residentKilobytes()));
      std::fflush(stdout);
    }
    const double growth =
        100.0 * static_cast<double>(heldKilobytes() - before) / static_cast<double>(resident);
    std::printf("%s: memory grew by %.2f %% after the warm-up, %ld windows came and went\n", name(),
                growth, windows_);
    RecordProperty("growth_percent", std::to_string(growth));
    EXPECT_LE(growth, acceptedGrowth());
    EXPECT_EQ(descriptorCount(), descriptors);
    EXPECT_TRUE(program_->isRunning());
  }

  long descriptorCount() const {
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(program_->pid()) +
                                                  "/fd");
    return std::distance(begin(all), end(all));
  }

  const SessionFolder folder_;
  std::unique_ptr<Program> program_;

 private:
  static const char* name() {
    return testing::UnitTest::GetInstance()->current_test_info()->name();
  }

  long residentKilobytes() const { return kilobytes("VmRSS:"); }
  // Without the pages of programs and libraries, of which more are read as more is done.
  long heldKilobytes() const { return kilobytes("RssAnon:"); }
  long kilobytes(const char* what) const {
    std::ifstream status("/proc/" + std::to_string(program_->pid()) + "/status");
    std::string key;
    long value = 0;
    for (std::string rest; status >> key; std::getline(status, rest)) {
      if (key == what) status >> value;
    }
    return value;
  }

  void runTo(int tenth) {
    const Size goal{size_.commands * tenth / 10, size_.taps * tenth / 10};
    while (!HasFailure() && (done_.taps < goal.taps || done_.commands < goal.commands)) {
      const bool isTapDue = done_.taps * size_.commands <= done_.commands * size_.taps;
      if (isTapDue && done_.taps < goal.taps) {
        const bool isPorts = done_.tapsByPort * size_.taps < done_.taps * size_.tapsByPort;
        isPorts ? tapByPort() : tap();
      } else {
        rounds_++ % 2 == 0 ? round() : roundByPort();
      }
    }
  }

  // --- over the fixed port

  json ask(const std::string& function, const std::string& value, const std::string& tag = "",
           const std::string& type = "", const std::string& data = "") {
    ++done_.commands;
    return playback_->ask({{"functionname", function},
                           {"tagname", tag},
                           {"accessortype", type},
                           {"accessorvalue", value},
                           {"datavalue", data}});
  }
  void expect(const json& expected, const json& answered) {
    ASSERT_EQ(answered, expected) << "command " << done_.commands;
  }
  static json output(const std::string& text) { return json::array({{{"output", text}}}); }

  std::string find(const std::string& tag, const std::string& text) {
    const json found = ask("findelements", text, tag, "text");
    EXPECT_EQ(found.size(), 1U) << tag << " " << text << ", command " << done_.commands;
    return found.empty() ? "" : found.at(0).at("elementID").get<std::string>();
  }

  // Types a name that was never typed before, taps, and looks for what the program makes of it.
  void tapByPort() {
    ++done_.tapsByPort;
    const std::string user = "user " + std::to_string(++done_.taps);
    const json fields = ask("findeditablecomponents", "User name", "", "text");
    ASSERT_EQ(fields.size(), 1U);
    const std::string field = fields.at(0).at("elementID");
    expect(json::array(), ask("sendkeysonelement", field, "", "", user));
    expect(output(user), ask("gettext", field));
    expect(json::array(), ask("clickelement", find("UIButton", "Log in")));
    find("UILabel", "Hello, " + user);
  }

  // Commands that change nothing, and some that are not commands.
  void roundByPort() {
    const std::string button = find("UIButton", "Log in");
    expect(output("Log in"), ask("gettext", button));
    expect(output("true"), ask("isenabled", button));
    expect(output("true"), ask("isdisplayed", button));
    const json width = ask("getwidth", button);
    if (width_.is_null()) width_ = width;
    expect(width_, width);
    expect(json::array(), ask("gettext", "nobody"));
    expect(json::array(), ask("nosuchcommand", std::string(done_.commands % 5000, 'x')));
    expect(json::array(), ask("findelements", "no such text", "UILabel", "partialtext"));
    ++done_.commands;
    const json raised = playback_->ask({{"functionname", done_.commands}});
    expect(json::array({{{"exceptionmsg", "functionname must be a string"}}}), raised);
    if (rounds_ % 100 == 0) lookAtAll();
  }

  void lookAtAll() {
    const json picture = ask("ai_getscreensnapshot", "");
    EXPECT_GT(picture.at(0).at("output").get<std::string>().size(), 1000U);
    const json described = ask("ai_findelements", "", "uibutton");
    if (described_ == 0) described_ = described.size();
    EXPECT_EQ(described.size(), described_);
    EXPECT_GT(call("window.picture", json::object())["data"].get<std::string>().size(), 1000U);
  }

  // --- over the session channel

  json call(const std::string& method, const json& parameters) {
    ++done_.commands;
    return session_->ask(method, parameters);
  }
  json only(json selector) {
    selector["limit"] = 2;
    const json found = call("element.find", selector)["elements"];
    EXPECT_EQ(found.size(), 1U) << selector << ", command " << done_.commands;
    return found.empty() ? json::object() : found[0];
  }
  void click(const json& selector) {
    call("element.click", {{"element", only(selector)["element"]}});
  }
  void await(const json& selector, const char* state) {
    call("wait.for", {{"conditions", {{{"find", selector}, {"is", state}}}}});
  }

  void tap() {
    if (done_.taps % 20 == 0) showWindow();
    if (done_.taps % size_.tapsATyping == 0) return type();
    ++done_.taps;
    const json element = only({{"kind", "UISwitch"}});
    call("element.click", {{"element", element["element"]}});
    const json after = call("element.describe", {{"element", element["element"]}})["description"];
    expect(!element["checked"].get<bool>(), after["checked"]);
  }

  void type() {
    const std::string user = "user " + std::to_string(++done_.taps);
    const json field = only({{"placeholder", "User name"}})["element"];
    call("element.setText", {{"element", field}, {"text", user}});
    expect(user, call("element.describe", {{"element", field}})["description"]["text"]);
    click({{"kind", "UIButton"}, {"text", "Log in"}});
    await({{"kind", "UILabel"}, {"text", "Hello, " + user}}, "visible");
  }

  // One that comes and goes.
  void showWindow() {
    ++windows_;
    click({{"kind", "UIButton"}, {"textContains", "details"}});
    const json question = {{"text", "Really?"}};
    await(question, "there");
    click({{"kind", "UIButton"}, {"text", "Cancel"}});
    await(question, "gone");
  }

  void round() {
    const json button = only({{"kind", "UIButton"}, {"text", "Log in"}});
    const json same = call("element.describe", {{"element", button["element"]}})["description"];
    expect(button["rect"], same["rect"]);
    const json tree = call("tree.get", json::object());
    const json changes = call("tree.get", {{"since", tree["version"]}});
    EXPECT_FALSE(changes["whole"]) << "command " << done_.commands;
    EXPECT_LT(changes["elements"].size(), tree["elements"].size());
    expectError("no such element", "element.click", {{"element", 1'000'000'000 + done_.commands}});
    expectError("unknown method", std::string(done_.commands % 5000 + 1, 'x'), json::object());
    expect(json::array(), call("element.find", {{"text", "no such text"}})["elements"]);
  }
  void expectError(const std::string& name, const std::string& method, const json& parameters) {
    ++done_.commands;
    session_->send(method, parameters, 2);
    expect(name, session_->answer()["error"]["data"]["error"]);
  }

  std::unique_ptr<Playback> playback_;
  std::unique_ptr<SessionWire> session_;
  Size size_;
  Size done_;
  long rounds_ = 0;
  long windows_ = 0;
  json width_;
  std::size_t described_ = 0;
};

TEST_F(Soak, Headless) {
  soak({built("bin/tarni-headless"), "--skip-waits"}, {},
       isFull() ? Size{1'000'000, 100'000, 20'000} : Size{20'000, 2'000, 1'000});
}

// Every tap of a real program over the port waits for half a second, and so does the typing before.
// Of each text that was typed a field of Qt keeps what it needs to undo it.
Size sizeOfQt() {
  return isFull() ? Size{100'000, 10'000, 100, 50} : Size{3'000, 40, 4, 5};
}
TEST_F(Soak, Qt5) {
  soak({built("bin/qt-sample-5")}, agentEnvironment(), sizeOfQt());
}
TEST_F(Soak, Qt6) {
  soak({built("bin/qt-sample-6")}, agentEnvironment(), sizeOfQt());
}
TEST_F(Soak, Quick) {
  Program::Environment environment = agentEnvironment();
  environment["QT_QUICK_BACKEND"] = "software";
  soak({built("bin/quick-sample-6")}, environment, sizeOfQt());
}

// Peers that leave, or are torn off, at any byte of what they say.
class CutOff : public Soak {
 protected:
  void startHeadless() { start({built("bin/tarni-headless"), "--skip-waits"}, {}); }

  // In an orderly way or not, after reading or not.
  void cutOff(Wire peer, const std::string& speech) {
    try {
      peer.send(speech.substr(0, random_() % (speech.size() + 1)));
    } catch (const std::runtime_error&) {
      // it was closed meanwhile
    }
    random_() % 2 == 0 ? peer.leave() : peer.reset();
  }
  static int count() { return isFull() ? 1'000 : 20; }
  // Once what a peer that left had is closed, and the port is open for the next.
  long descriptorsAtRest() const {
    constexpr int kTimesAlike = 20;
    long last = 0;
    int alike = 0;
    eventually([&] {
      const long now = descriptorCount();
      alike = now == std::exchange(last, now) ? alike + 1 : 0;
      return alike == kTimesAlike;
    });
    return last;
  }

  static constexpr const char* kCommands =
      R"({"functionname":"findelements","tagname":"UIButton","accessortype":"text","accessorvalue":"Log in"})"
      "\r\n"
      R"({"functionname":"ai_findelements","tagname":"uibutton"})"
      "\r\n"
      R"({"functionname":"sendkeysonelement","accessorvalue":"nobody","datavalue":"x"})"
      "\r\n";
  std::minstd_rand random_{1};
};

TEST_F(CutOff, AtTheSessionSocket) {
  startHeadless();
  const SessionWire witness(folder_.socket());
  const json field = witness.find({{"placeholder", "User name"}});
  const long descriptors = descriptorCount();
  const auto request = [](int id, const char* method, const json& parameters) {
    return json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", parameters}}.dump() +
           "\n";
  };
  const std::string speech =
      request(1, "tree.get", {{"picture", true}}) +
      request(2, "input.pointer", {{"steps", {{{"move", field}}, {{"down", "left"}}}}}) +
      request(3, "element.setText", {{"element", field["element"]}, {"text", "cut"}}) +
      request(4, "wait.for", {{"conditions", {{{"find", {{"text", "never"}}}}}}}) +
      request(5, "record.start", json::object()) + request(6, "screen.watch", json::object());
  for (int peer = 0; peer < count(); ++peer) {
    cutOff(Wire(folder_.socket()), speech);
    ASSERT_TRUE(witness.ask("app.info", json::object()).contains("pid")) << "peer " << peer;
  }
  EXPECT_TRUE(eventually([&] { return descriptorCount() == descriptors; })) << descriptorCount();
}

// A connection that comes while the last one is being ended may be ended with it.
Wire servedByPlayback() {
  while (true) {
    try {
      Wire wire(kPlaybackPort);
      wire.sendLine(R"({"functionname":"gettext"})");
      if (wire.readMessage() == "[]") return wire;
    } catch (const std::runtime_error&) {
      pauseBetweenAttempts();
    }
  }
}

TEST_F(CutOff, AtThePlaybackPort) {
  startHeadless();
  servedByPlayback();
  const long descriptors = descriptorsAtRest();
  for (int peer = 0; peer < count(); ++peer) cutOff(servedByPlayback(), kCommands);
  servedByPlayback();
  EXPECT_TRUE(program_->isRunning());
  EXPECT_EQ(descriptorsAtRest(), descriptors);
}

// It takes one client, once, so each has a program of its own, which is played on afterwards.
TEST_F(CutOff, AtTheRecorderPort) {
  for (int peer = 0; peer < count(); ++peer) {
    startHeadless();
    cutOff(Wire(kRecorderPort),
           "startobjectspy\r\nhighlight=0\r\nhighlight=99\r\nstopobjectspy\r\n");
    ASSERT_EQ(Playback().find("UIButton", "text", "Log in").size(), 1U) << "peer " << peer;
  }
}

TEST_F(CutOff, AtThePortsOfTheHost) {
  constexpr std::uint16_t kPort = 4799;
  const std::string body = R"({"capabilities":{"alwaysMatch":{"appium:app":"/nowhere"}}})";
  const std::string get = "GET /status HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n";
  const std::string speech =
      get +
      "POST /session HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\n"
      "Content-Length: " +
      std::to_string(body.size()) + "\r\n\r\n" + body + get;
  const auto isServed = [&] {
    const Wire peer(kPort);
    peer.send(get);
    return peer.readLine().starts_with("HTTP/1.1 ");
  };
  for (std::vector<std::string> words :
       {std::vector<std::string>{"webdriver", "--port"}, {"inspect", "--no-browser", "--on"}}) {
    SCOPED_TRACE(words.front());
    words.insert(words.begin(), built("bin/tarni"));
    words.push_back(std::to_string(kPort));
    start(words, {});
    ASSERT_TRUE(isServed());
    const long descriptors = descriptorsAtRest();
    for (int peer = 0; peer < count(); ++peer) cutOff(Wire(kPort), speech);
    EXPECT_TRUE(isServed());
    EXPECT_TRUE(program_->isRunning());
    EXPECT_EQ(descriptorsAtRest(), descriptors);
  }
}

}  // namespace
}  // namespace tarni::test
