// Played: what has come of playing one step. Plain value, any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/player/Candidates.h"
#include "host/session/PlayResult.h"

namespace tarni::host {

struct Picture {
  std::string format;  // "png", "jpeg"
  std::string data;    // in Base64; "" for none
  double scale = 1;    // pixels of a point
};

// As the channel tells them, of all requests of a step together.
struct StepCosts {
  double busyMs = 0;
  double longestMs = 0;
  double cpuMs = 0;
  double memoryBytes = 0;  // afterwards; 0 when it is not known

  // Of another request, by its answer.
  void add(const Json& answer);
};

struct Played {
  using Result = PlayResult;

  std::size_t number = 0;  // of the step, from 1
  Result result = Result::NotPlayed;
  bool hasActed = false;          // when the connection was lost: the program may have ended by it
  std::string message = {};       // why it failed, or what is worth saying
  Json element = Json::object();  // as it was found; empty when it was not
  std::optional<std::size_t> locator = {};  // of its element's, that found it
  Json proposal = nullptr;  // the step as it had better be; null when it is well as it is
  std::string better = {};  // what is better in it, for a person
  bool isMissing = false;   // the element was not found
  std::vector<Candidate> candidates = {};  // that are there in its place
  double began = 0;                        // seconds from the start of the play
  double seconds = 0;
  StepCosts costs = {};
  Picture before = {};
  Picture after = {};
  std::string output = {};  // what the program printed meanwhile

  bool hasFailed() const { return result == Result::Failed || result == Result::Lost; }
};

// A wait of that length is said, as somebody will ask what for.
inline constexpr std::chrono::seconds kWorthSaying{1};

// From the beginning of a play to the end of its last step.
double secondsOf(std::span<const Played> play);

// Why a step cannot be played, for a person.
class StepFailure : public std::runtime_error {
 public:
  explicit StepFailure(const std::string& why) : std::runtime_error(why) {}
  // The element is not there, but these are.
  StepFailure(const std::string& why, std::vector<Candidate> candidates)
      : std::runtime_error(why), candidates_(std::move(candidates)) {}

  // Null when it is not that the element is missing.
  const std::optional<std::vector<Candidate>>& candidates() const { return candidates_; }

 private:
  std::optional<std::vector<Candidate>> candidates_;
};

}  // namespace tarni::host
