#include "host/launch/ToolProcess.h"

namespace tarni::host {

namespace {

std::vector<std::string> named(std::vector<std::string> words) {
  words.insert(words.begin(), "tarni");
  return words;
}

}  // namespace

ToolProcess::ToolProcess(const std::vector<std::string>& words, std::chrono::seconds timeToEnd)
    : ChildProcess({.file = "/proc/self/exe",
                    .words = named(words),
                    .output = Output::Kept,
                    .timeToEnd = timeToEnd,
                    .whenAlone = SIGKILL}) {}  // its reaper makes an end of what would not end

}  // namespace tarni::host
