#include "tests/conformance/Subject.h"

#include <iostream>
#include <ostream>

namespace tarni::test {
namespace {

Subject qt(const std::string& major) {
  return {"Qt" + major, {built("bin/qt-sample-" + major)}, agentEnvironment()};
}

// The software renderer is the only one that needs no display.
Subject quick(const std::string& major) {
  Program::Environment environment = agentEnvironment();
  environment["QT_QUICK_BACKEND"] = "software";
  return {"Quick" + major, {built("bin/quick-sample-" + major)}, environment};
}

// Where windows do not learn their places, and the compositor has the last word on them.
Subject onWayland(Subject subject) {
  subject.name += "Wayland";
  subject.isOnWayland = true;
  return subject;
}

}  // namespace

void PrintTo(const Subject& subject, std::ostream* output) {
  *output << subject.name;
}

std::vector<Subject> subjects() {
  return {{"Headless", {built("bin/tarni-headless")}, {}},
          qt("5"),
          qt("6"),
          quick("5"),
          quick("6"),
          {"iOS", {built("bin/ios-sample")}, {}},
          onWayland(qt("5")),
          onWayland(qt("6")),
          onWayland(quick("5")),
          onWayland(quick("6"))};
}

std::string subjectName(const testing::TestParamInfo<Subject>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(On, Conformance, testing::ValuesIn(subjects()), subjectName);

void Conformance::start(const Program::Environment& more) {
  Program::Environment environment = GetParam().environment;
  if (GetParam().isOnWayland) {
    compositor_ = std::make_unique<Compositor>();
    compositor_->addTo(environment);
  }
  environment.insert(more.begin(), more.end());
  program_ = std::make_unique<Program>(GetParam().command, environment);
}

void Conformance::TearDown() {
  if (!HasFailure()) return;
  std::cout << (program_->isRunning() ? "the program runs" : "the program has ended")
            << ", and has said:\n"
            << program_->output() << program_->stacks() << std::endl;
}

Playback& Conformance::playback() {
  if (playback_) return *playback_;
  playback_ = std::make_unique<Playback>();
  // The list has its rows once the compositor has agreed to the window's size.
  if (GetParam().isOnWayland) {
    EXPECT_TRUE(
        eventually([&] { return !playback_->find("UITableViewCell", "text", "Row 2").empty(); }));
  }
  return *playback_;
}

bool Conformance::shows(const std::string& tag, const std::string& text) {
  return !playback().find(tag, "text", text).empty();
}

}  // namespace tarni::test
