#include "backends/ios/Report.h"

#include <exception>
#include <mutex>
#include <string>
#include <unordered_set>

#include "backends/ios/Guard.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::ios {
namespace {

// Never destroyed: threads of the agent still run while the process exits.
bool isNew(std::string_view line) {
  static auto* const mutex = new std::mutex;
  static auto* const written = new std::unordered_set<std::string>;
  const std::lock_guard lock(*mutex);
  return written->emplace(line).second;
}

}  // namespace

void reportOnce(std::string_view line) noexcept {
  try {
    if (isNew(line)) platform::NSLog("%.*s", static_cast<int>(line.size()), line.data());
  } catch (const std::exception& failure) {
    platform::NSLog("%s", failure.what());
  }
}

void reportMissing(std::string_view which, std::string_view whatNoLongerWorks) noexcept {
  try {
    reportOnce(std::string(which) + " is missing here: " + std::string(whatNoLongerWorks));
  } catch (const std::exception& failure) {
    platform::NSLog("%s", failure.what());
  }
}

void detail::reportRaised(const char* what, const TarniRaised& raised) noexcept {
  try {
    reportOnce(std::string(what) + " raised " + raised.name + ": " + raised.reason);
  } catch (const std::exception& failure) {
    platform::NSLog("%s", failure.what());
  }
}

}  // namespace tarni::ios
