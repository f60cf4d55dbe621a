// Session: a recorded session in memory: what it was recorded with, and its steps, which can be
// edited. As a file it is JSON with one step a line (docs/sessions.md). A plain value, any thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/session/SessionLines.h"
#include "host/session/Step.h"

namespace tarni::host {

class Session {
 public:
  static constexpr int kVersion = 2;

  std::vector<std::string> program;  // its start-up line, empty when it is not known
  std::string toolkit;
  std::string agent;     // its version
  std::string recorded;  // when, in UTC

  // The same with the program that runs, by the answer of `app.info`, and the time that it is now.
  static Session recordedNow(std::vector<std::string> program, const Json& info);
  // Throws std::invalid_argument that names the line of what is wrong.
  static Session fromLines(const SessionLines& lines);
  Json header() const;
  // For this user alone; in place of what stands there. Failures are std::runtime_errors.
  void save(const std::filesystem::path& path) const;

  const std::vector<Step>& steps() const { return steps_; }
  // All throw std::out_of_range for a place that is none.
  void insert(std::size_t at, Step step);
  void remove(std::size_t at);
  void replace(std::size_t at, Step step);

  // Takes a step as the recorder tells it: one that has grown replaces the step of the same order
  // number, and all that was told behind it. The place of the first step that changed.
  std::size_t take(Step told);

 private:
  std::vector<Step> steps_;
};

}  // namespace tarni::host
