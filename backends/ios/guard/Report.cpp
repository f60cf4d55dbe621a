#include "backends/ios/guard/Report.h"

#include <exception>
#include <mutex>
#include <string>
#include <unordered_set>

#include "platform/Foundation/NSLog.h"

namespace tarni::ios {
namespace {

// Never destroyed: threads of the agent still run while the process exits.
bool isNew(std::string_view subject) {
  static auto* const mutex = new std::mutex;
  static auto* const reported = new std::unordered_set<std::string>;
  const std::lock_guard lock(*mutex);
  return reported->emplace(subject).second;
}

}  // namespace

void reportOnce(std::string_view subject, std::string_view line) noexcept {
  try {
    if (isNew(subject)) platform::NSLog("%.*s", static_cast<int>(line.size()), line.data());
  } catch (const std::exception& failure) {
    platform::NSLog("%s", failure.what());
  }
}

void reportMissing(std::string_view which, std::string_view whatNoLongerWorks) noexcept {
  try {
    reportOnce(which, std::string(which) + " is missing here: " + std::string(whatNoLongerWorks));
  } catch (const std::exception& failure) {
    platform::NSLog("%s", failure.what());
  }
}

}  // namespace tarni::ios
