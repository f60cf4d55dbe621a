// Conformance: the fixture of the suite that every backend must pass. Each case starts the sample
// screen anew on the backend that is its parameter.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/Compositor.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {

// The answer to what finds nothing, says nothing or is not a command.
inline const nlohmann::json kNothing = nlohmann::json::array();

// One line a backend: its name and how its sample is started.
struct Subject {
  std::string name;
  std::vector<std::string> command;
  Program::Environment environment;
  int scaleOnWayland = 0;  // 0 elsewhere
};

// For the names of the cases.
void PrintTo(const Subject& subject, std::ostream* output);

std::string subjectName(const testing::TestParamInfo<Subject>& info);

// The login screen.
std::vector<Subject> subjects();
// Every kind of control of Qt's.
std::vector<Subject> controls();

class OfSubjects : public testing::TestWithParam<Subject> {
 protected:
  // The sample, with that in its environment as well, where windows do not learn their places on a
  // compositor of its own.
  void start(const Program::Environment& more = {});
  // What the program said helps to understand a failure.
  void TearDown() override;

  std::unique_ptr<Compositor> compositor_;
  std::unique_ptr<Program> program_;
};

class Conformance : public OfSubjects {
 protected:
  void SetUp() override { start(); }
  Playback& playback();
  // The text of the element with that accessibility identifier is not part of the wire: labels are
  // found by what they show.
  bool shows(const std::string& tag, const std::string& text);

 private:
  std::unique_ptr<Playback> playback_;
};

}  // namespace tarni::test
