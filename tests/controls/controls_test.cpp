// Every standard control of both toolkits, on both majors of Qt and on both window systems: a hand
// uses it, the steps are recorded and played on a fresh copy of the page, which has to tell the
// same. What is done, and what comes of it, stands in docs/controls.md.
#include <gmock/gmock.h>
#include <sched.h>
#include <signal.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <future>
#include <map>
#include <sstream>
#include <system_error>
#include <thread>

#include "host/session/Session.h"
#include "host/stream/StreamSession.h"
#include "tests/controls/Hand.h"
#include "tests/support/Desktop.h"
#include "tests/support/Files.h"

namespace tarni::test {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;

using Lines = std::vector<std::string>;

// A text step takes the recorder half a second, in which taps are lost.
constexpr auto kPause = 750ms;
constexpr auto kPauseAfterKeys = 300ms;
constexpr auto kLongest = 3s;

bool isTyped(const std::string& step) {
  return step.starts_with("TypeText");
}

long clicksIn(const Lines& steps) {
  return static_cast<long>(steps.size()) - std::ranges::count_if(steps, isTyped);
}

// `ClickButton UIButton "Press"` for each.
Lines stepsIn(const fs::path& session) {
  Lines words;
  try {
    for (const auto& step : host::readStreamSession(session).steps) {
      const std::string data = step.data.empty() ? "" : " = " + step.data;
      words.push_back(step.action + " " + step.element() + data);
    }
  } catch (const std::exception&) {
    // it is being written
  }
  return words;
}

// `choose UIPickerView "Colour" = Blue` for each, behind the first so many.
Lines toldIn(const fs::path& session, std::size_t known) {
  Lines words;
  try {
    const auto steps = host::Session::fromLines(host::readSessionLines(session)).steps();
    for (std::size_t i = known; i < steps.size(); ++i) words.push_back(steps[i].inWords());
  } catch (const std::exception&) {
    // it is being written
  }
  return words;
}

// Without what the stream tells of fields that merely had the focus: the text is not among the
// wanted steps, or it is told again.
Lines withoutInvented(const Lines& steps, const Lines& wanted) {
  Lines kept;
  for (const auto& step : steps) {
    const bool isWanted = std::ranges::count(wanted, step) > std::ranges::count(kept, step);
    if (!isTyped(step) || isWanted) kept.push_back(step);
  }
  return kept;
}

// "colour=Blue" a line, among what else the program prints.
Lines statesIn(const std::string& output) {
  std::istringstream text(output);
  Lines states;
  for (std::string line; std::getline(text, line);) {
    const auto equals = line.find('=');
    if (equals != std::string::npos && line.find(' ') > equals) states.push_back(line);
  }
  return states;
}

// What is typed comes key by key: only its end counts, and only when that is news.
Lines changes(const Lines& states) {
  Lines news;
  std::map<std::string, std::string> known;
  for (auto state = states.begin(); state != states.end(); ++state) {
    const auto next = state + 1;
    const bool isBegun =
        next != states.end() && (next->starts_with(*state) || state->starts_with(*next));
    const std::string control = state->substr(0, state->find('='));
    if (!isBegun && std::exchange(known[control], *state) != *state) news.push_back(*state);
  }
  return news;
}

// Of what a control told in one go the last: a drag of a slider is played as its outcome.
Lines outcomes(const Lines& states) {
  Lines last;
  const auto controlOf = [](const std::string& state) { return state.substr(0, state.find('=')); };
  for (const auto& state : changes(states)) {
    if (!last.empty() && controlOf(last.back()) == controlOf(state)) last.pop_back();
    last.push_back(state);
  }
  return last;
}

// A page of controls, and what it is shown on.
struct Page {
  std::string program;
  int scaleOnWayland = 0;  // 0 on X
};

constexpr int kHeight = 900;
constexpr int kWidth = 1024;
constexpr int kWidthOnWayland = 2600;  // room for windows beside each other

std::unique_ptr<const Desktop> desktop(const Page& page) {
  return Desktop::make(page.scaleOnWayland, page.scaleOnWayland > 0 ? kWidthOnWayland : kWidth,
                       kHeight);
}

// One session: what a hand does with the page while it is recorded, and what becomes of that.
class Try {
 public:
  Try(const Page& page, const Session& session, const fs::path& folder)
      : program_(page.program),
        session_(session),
        folder_(folder),
        file_(folder / "session.json"),
        scouted_(desktop(page)),
        recorded_(desktop(page)) {
    fs::create_directories(folder);
  }

  // False when something else came than was wanted.
  bool record() {
    const auto scout = start(*scouted_, "scout", {});
    await({}, *scout);
    const auto recorded = start(*recorded_, "recorded", {"--isolated=recorded"});
    await({"--in", "recorded"}, *recorded);
    const Playback playback;
    const auto told = folder_ / "told.json";
    Program channelRecorder = tarni({"--in", "recorded", "record", "-o", told});
    Program recorder = tarni({"--in", "recorded", "--port", "9892", "record", "-o", file_});
    for (const auto& file : {told, file_}) {
      EXPECT_TRUE(eventually([&file] { return fs::exists(file); })) << recorder.output();
    }
    std::size_t known = 0;
    const Hand hand(*scouted_, *recorded_, playback);
    Lines expected;
    for (const Row& row : session_) {
      SCOPED_TRACE(row.control);
      const auto printed = recorded->output().size();
      const long clicks = clicksIn(expected);
      expected.insert(expected.end(), row.steps.begin(), row.steps.end());
      for (const Act& act : row.acts) {
        hand.act(act);
        if (act.isOfPointer()) awaitOneMore(clicks, clicksIn(expected));
        std::this_thread::sleep_for(act.isOfPointer() ? kPause : kPauseAfterKeys);
      }
      const auto steps = [&] { return withoutInvented(stepsIn(file_), expected); };
      eventually([&] { return steps() == expected; }, kLongest);
      EXPECT_EQ(steps(), expected);
      eventually([&] { return toldIn(told, known) == row.told; }, kLongest);
      EXPECT_EQ(toldIn(told, known), row.told);
      known += row.told.size();
      if (steps() != expected) return false;
      const auto states = statesIn(recorded->output().substr(printed));
      for (const auto& state : row.states) EXPECT_THAT(states, Contains(state));
      states_.insert(states_.end(), states.begin(), states.end());
      const Lines& played = row.played == Row::Played::Same ? states : row.statesPlayed;
      statesPlayed_.insert(statesPlayed_.end(), played.begin(), played.end());
    }
    for (Program* const one : {&recorder, &channelRecorder}) {
      one->signal(SIGINT);
      one->wait(10s);
    }
    return true;
  }

  // What the stream has told, over the fixed ports.
  void playAgain() {
    const bool stops = session_.back().played == Row::Played::Stops;
    play(file_, "again", stops ? 1 : 0, stops ? "not found" : "steps passed", statesPlayed_,
         changes);
  }

  // What the session channel has told: all of it happens again.
  void playOverChannel() {
    play(folder_ / "told.json", "channel", 0, "steps passed", states_, outcomes);
  }

 private:
  void play(const fs::path& session, const std::string& home, int code, const std::string& says,
            const Lines& states, Lines (*counted)(const Lines&)) {
    // Nobody points at anything meanwhile.
    scouted_->moveTo(0, kHeight - 1);
    const auto again = start(*scouted_, home, {});
    await({}, *again);
    const auto printed = again->output().size();
    Program player = tarni({"play", session, "--attach-running", "--timeout", "4"});
    EXPECT_EQ(player.wait(100s), code) << player.output();
    EXPECT_THAT(player.output(), HasSubstr(says));
    const auto told = [&] { return counted(statesIn(again->output().substr(printed))); };
    eventually([&] { return told() == counted(states); }, kLongest);
    EXPECT_EQ(told(), counted(states)) << player.output();
  }

  // In a home of its own, with two files in it.
  std::unique_ptr<Program> start(const Desktop& display, const std::string& name,
                                 const Lines& options) const {
    const fs::path home = folder_ / name;
    fs::create_directories(home);
    for (const char* const file : {"alpha.txt", "beta.txt"}) std::ofstream(home / file) << file;
    auto environment = display.environment();
    environment["HOME"] = home;
    environment["XDG_CONFIG_HOME"] = environment["XDG_DATA_HOME"] = "";
    environment["XDG_RUNTIME_DIR"] = folder_;
    environment["QT_QUICK_BACKEND"] = "software";
    // Qt 5 would ask the X server, and not the compositor.
    environment["QT_FONT_DPI"] = "96";
    Lines command = {built("bin/tarni"), "run"};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"--", built("bin/" + program_)});
    return std::make_unique<Program>(command, environment);
  }

  // Until its page is there.
  void await(Lines where, const Program& started) const {
    where.insert(where.end(), {"wait", "--timeout", "50"});
    EXPECT_EQ(tarni(where).wait(60s), 0) << started.output();
  }

  Program tarni(Lines command) const {
    command.insert(command.begin(), built("bin/tarni"));
    return Program(command, {{"XDG_RUNTIME_DIR", folder_}});
  }

  // A click more than before, unless all that are wanted were there.
  void awaitOneMore(long before, long wanted) {
    const auto clicks = [this] { return clicksIn(stepsIn(file_)); };
    clicks_ = std::max(clicks_, before);
    if (clicks_ == wanted) return;
    eventually([&] { return clicks() > clicks_; }, kLongest);
    clicks_ = clicks();
  }

  const std::string program_;
  const Session& session_;
  const fs::path folder_;
  const fs::path file_;
  const std::unique_ptr<const Desktop> scouted_;
  const std::unique_ptr<const Desktop> recorded_;
  Lines states_;
  Lines statesPlayed_;
  long clicks_ = 0;
};

// From now on what the thread starts is in a network of its own, where the agent's ports are free.
// X servers have to be up by then: in several networks they would take the same display.
void enterOwnNetwork() {
  if (unshare(CLONE_NEWNET) != 0) throw std::system_error(errno, std::generic_category());
  run({"ip", "link", "set", "lo", "up"});
}

class Controls : public testing::TestWithParam<Page> {};

void PrintTo(const Page& page, std::ostream* output) {
  *output << page.program;
}

INSTANTIATE_TEST_SUITE_P(Of, Controls,
                         testing::Values(Page{"qt-controls-5"}, Page{"qt-controls-6"},
                                         Page{"quick-controls-5"}, Page{"quick-controls-6"},
                                         Page{"qt-controls-6", 2}, Page{"quick-controls-5", 1},
                                         Page{"qt-controls-5", 1}),
                         [](const auto& info) {
                           const std::string& program = info.param.program;
                           return (program.starts_with("qt") ? "Widgets" : "Quick") +
                                  program.substr(program.size() - 1) +
                                  (info.param.scaleOnWayland > 0 ? "Wayland" : "");
                         });

TEST_P(Controls, AreRecordedAndPlayedAgain) {
  const std::string program = GetParam().program;
  const Folder folder;
  const auto sessions =
      sessionsOf(program.starts_with("qt") ? "Widgets" : "Qt Quick", program.back());
  std::vector<std::future<void>> running;
  for (std::size_t i = 0; i < sessions.size(); ++i) {
    running.push_back(std::async(std::launch::async, [&, i] {
      Try once(GetParam(), sessions[i], folder.path / std::to_string(i));
      enterOwnNetwork();
      if (!once.record()) return;
      once.playAgain();
      once.playOverChannel();
    }));
  }
  for (auto& session : running) EXPECT_NO_THROW(session.get());
}

}  // namespace
}  // namespace tarni::test
