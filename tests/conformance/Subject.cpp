#include "tests/conformance/Subject.h"

#include <iostream>
#include <ostream>

namespace tarni::test {
namespace {

// The software renderer is the only one that needs no display.
Subject qt(const std::string& name, const std::string& program, int scaleOnWayland = 0) {
  Program::Environment environment = agentEnvironment();
  environment["QT_QUICK_BACKEND"] = "software";
  return {name, {built("bin/" + program)}, environment, scaleOnWayland};
}

}  // namespace

void PrintTo(const Subject& subject, std::ostream* output) {
  *output << subject.name;
}

std::vector<Subject> subjects() {
  return {{"Headless", {built("bin/tarni-headless")}, {}},
          qt("Qt5", "qt-sample-5"),
          qt("Qt6", "qt-sample-6"),
          qt("Quick5", "quick-sample-5"),
          qt("Quick6", "quick-sample-6"),
          {"iOS", {built("bin/ios-sample")}, {}},
          qt("Qt5Wayland", "qt-sample-5", 1),
          qt("Qt6Wayland", "qt-sample-6", 1),
          qt("Quick5Wayland", "quick-sample-5", 1),
          qt("Quick6Wayland", "quick-sample-6", 1)};
}

std::vector<Subject> controls() {
  return {qt("Widgets5", "qt-controls-5"),
          qt("Widgets6", "qt-controls-6"),
          qt("Quick5", "quick-controls-5"),
          qt("Quick6", "quick-controls-6"),
          qt("Widgets5Wayland", "qt-controls-5", 2),
          qt("Widgets6Wayland", "qt-controls-6", 2),
          qt("Quick5Wayland", "quick-controls-5", 2),
          qt("Quick6Wayland", "quick-controls-6", 2)};
}

std::string subjectName(const testing::TestParamInfo<Subject>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(On, Conformance, testing::ValuesIn(subjects()), subjectName);

void OfSubjects::start(const Program::Environment& more) {
  Program::Environment environment = GetParam().environment;
  if (GetParam().scaleOnWayland > 0) {
    compositor_ = std::make_unique<Compositor>(1280, 1024, GetParam().scaleOnWayland);
    compositor_->addTo(environment);
  }
  environment.insert(more.begin(), more.end());
  program_ = std::make_unique<Program>(GetParam().command, environment);
}

void OfSubjects::TearDown() {
  if (!HasFailure()) return;
  std::cout << (program_->isRunning() ? "the program runs" : "the program has ended")
            << ", and has said:\n"
            << program_->output() << program_->stacks() << std::endl;
}

Playback& Conformance::playback() {
  if (playback_) return *playback_;
  playback_ = std::make_unique<Playback>();
  // The list has its rows once the compositor has agreed to the window's size.
  if (GetParam().scaleOnWayland > 0) {
    EXPECT_TRUE(
        eventually([&] { return !playback_->find("UITableViewCell", "text", "Row 2").empty(); }));
  }
  return *playback_;
}

bool Conformance::shows(const std::string& tag, const std::string& text) {
  return !playback().find(tag, "text", text).empty();
}

}  // namespace tarni::test
