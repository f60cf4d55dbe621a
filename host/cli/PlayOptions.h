// PlayOptions: what a person asks of `tarni play`. Plain value.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "host/session/SessionProgram.h"

namespace tarni::host {

struct PlayOptions {
  std::string file;
  std::string report;
  std::string program;
  std::string displaySize;
  double stepSeconds = 10;
  bool guesses = false;
  bool attaches = false;
  bool ownDisplay = false;
  bool trusts = false;

  // Of sessions of the session channel.
  std::vector<std::string> secrets;
  std::string junit;
  double pauseSeconds = 0;
  std::size_t from = 1;
  std::size_t until = std::numeric_limits<std::size_t>::max();
  std::size_t repeat = 1;
  bool keepsGoing = false;
  bool updates = false;
  bool keepsPicturesBeside = false;

  SessionProgram::Start start() const;
};

}  // namespace tarni::host
