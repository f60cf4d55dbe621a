// A host tool that goes on and on: commands and taps over the wire, the answer to every one of them
// checked, and the program's memory as flat at the end as after the warm-up.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using nlohmann::json;

struct Size {
  long commands = 0;
  long taps = 0;
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
  // A short run shows what it costs to have threads, too.
  return isFull() ? 1.0 : 5.0;
}

class Soak : public testing::Test {
 protected:
  // Taps and other commands take turns, in the proportion of the sizes.
  void soak(const std::vector<std::string>& command, const Program::Environment& environment,
            Size size) {
    program_ = std::make_unique<Program>(command, environment);
    playback_ = std::make_unique<Playback>();
    size_ = size;
    // What is kept for good comes first: pools, caches, fonts. A short run is half warm-up.
    const int warm = isFull() ? 1 : 5;
    runTo({size.commands * warm / 10, size.taps * warm / 10});
    const long before = residentKilobytes();
    std::printf("%s: after the warm-up %.1f MB\n", name(), megabytes(before));
    for (int tenth = warm + 1; tenth <= 10; ++tenth) {
      runTo({size.commands * tenth / 10, size.taps * tenth / 10});
      std::printf("%s: %ld of %ld commands, %ld of %ld taps, %.1f MB\n", name(), done_.commands,
                  size.commands, done_.taps, size.taps, megabytes(residentKilobytes()));
      std::fflush(stdout);
    }
    const double growth =
        100.0 * static_cast<double>(residentKilobytes() - before) / static_cast<double>(before);
    std::printf("%s: memory grew by %.2f %% after the warm-up\n", name(), growth);
    RecordProperty("growth_percent", std::to_string(growth));
    EXPECT_LE(growth, acceptedGrowth());
    EXPECT_TRUE(program_->isRunning());
  }

 private:
  static const char* name() {
    return testing::UnitTest::GetInstance()->current_test_info()->name();
  }
  static double megabytes(long kilobytes) { return static_cast<double>(kilobytes) / 1024; }

  long residentKilobytes() const {
    std::ifstream status("/proc/" + std::to_string(program_->pid()) + "/status");
    std::string key;
    long value = 0;
    for (std::string rest; status >> key; std::getline(status, rest)) {
      if (key == "VmRSS:") status >> value;
    }
    return value;
  }

  void runTo(Size goal) {
    while (!HasFailure() && (done_.taps < goal.taps || done_.commands < goal.commands)) {
      const bool isTapDue = done_.taps * size_.commands <= done_.commands * size_.taps;
      isTapDue&& done_.taps < goal.taps ? tap() : round();
    }
  }

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
  void tap() {
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
  void round() {
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
    if (rounds_++ % 50 == 0) {
      const json picture = ask("ai_getscreensnapshot", "");
      EXPECT_GT(picture.at(0).at("output").get<std::string>().size(), 1000U);
      const json described = ask("ai_findelements", "", "uibutton");
      if (described_ == 0) described_ = described.size();
      EXPECT_EQ(described.size(), described_);
    }
  }

  std::unique_ptr<Program> program_;
  std::unique_ptr<Playback> playback_;
  Size size_;
  Size done_;
  long rounds_ = 0;
  json width_;
  std::size_t described_ = 0;
};

TEST_F(Soak, Headless) {
  soak({built("bin/tarni-headless"), "--skip-waits"}, {{"TARNI_LOG", "/dev/null"}},
       isFull() ? Size{100'000, 10'000} : Size{20'000, 2'000});
}

// Every tap of a real program waits for half a second, and so does the typing before it.
TEST_F(Soak, Qt6) {
  Program::Environment environment = agentEnvironment();
  environment["TARNI_LOG"] = "/dev/null";
  soak({built("bin/qt-sample-6")}, environment, isFull() ? Size{40'000, 200} : Size{5'000, 5});
}

}  // namespace
}  // namespace tarni::test
