#include "agent/diagnostics/Screenshots.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <span>

#include "agent/core/state/MainThread.h"
#include "agent/diagnostics/ViewHierarchy.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::Diagnostics {

using platform::NSLog;
using platform::Task;

namespace {

constexpr const char* kDirectoryVariable = "KIF_SCREENSHOTS";
constexpr double kJpegQuality = 0.6;
constexpr std::size_t kLongestName = 60;

// UTC to the millisecond and a number that counts up: "20261121T101530.042Z-0001".
std::string timeStamp() {
  static std::atomic<unsigned> sequence = 0;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  const std::time_t seconds = milliseconds / 1000;
  std::tm utc{};
  gmtime_r(&seconds, &utc);
  std::array<char, 32> date{};
  std::strftime(date.data(), date.size(), "%Y%m%dT%H%M%S", &utc);
  std::array<char, 64> stamp{};
  std::snprintf(stamp.data(), stamp.size(), "%s.%03dZ-%04u", date.data(),
                static_cast<int>(milliseconds % 1000), ++sequence);
  return stamp.data();
}

// What a command calls itself comes from the host tool and must not lead out of the directory.
std::string fileNamePart(const std::string& name) {
  std::string part = name.substr(0, kLongestName);
  for (char& letter : part) {
    if (!std::isalnum(static_cast<unsigned char>(letter))) letter = '_';
  }
  return part;
}

// A new file, for this user alone: it shows what the program shows.
bool isWritten(const std::string& path, std::span<const std::byte> bytes) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  while (file >= 0 && !bytes.empty()) {
    const ssize_t count = write(file, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) break;
    if (count > 0) bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return file >= 0 && close(file) == 0 && bytes.empty();
}

// Under a hidden name first, so that nobody ever reads half a file.
void writeAtomically(const std::string& directory, const std::string& name,
                     std::span<const std::byte> bytes) {
  const std::string path = directory + '/' + name;
  const std::string unfinished = directory + "/." + name + ".unfinished";
  if (isWritten(unfinished, bytes) && std::rename(unfinished.c_str(), path.c_str()) == 0) {
    NSLog("Diagnostics: wrote %s", path.c_str());
    return;
  }
  std::remove(unfinished.c_str());
  NSLog("Diagnostics: cannot write %s", path.c_str());
}

Task<void> writePicture(std::string directory, std::string name) {
  const platform::UIWindowRef window = platform::current().application->keyWindow();
  platform::UIImageRef image;
  if (window) image = co_await window->drawViewHierarchy();
  if (!image) {
    NSLog("Diagnostics: no window to draw");
    co_return;
  }
  const std::vector<std::byte> picture = image->JPEGRepresentation(kJpegQuality);
  writeAtomically(directory, name, picture);
}

void writeHierarchy(const std::string& directory, const std::string& name,
                    const std::string& reason) {
  std::string text = reason + "\n";
  for (const auto& window : platform::current().application->windowsWithKeyWindow()) {
    text += '\n' + viewHierarchyText(window);
  }
  writeAtomically(directory, name, std::as_bytes(std::span(text)));
}

}  // namespace

Task<void> recordFailure(std::string name, std::string reason) {
  assertMainThread();
  const char* const directory = std::getenv(kDirectoryVariable);
  if (!directory || !*directory) co_return;
  try {
    mkdir(directory, 0700);  // fails when it is there already
    const std::string stem = timeStamp() + '-' + fileNamePart(name);
    // The text first: drawing may let the program run on.
    writeHierarchy(directory, stem + ".txt", reason);
    co_await writePicture(directory, stem + ".jpg");
  } catch (...) {
    platform::logFailure("Diagnostics");
  }
}

}  // namespace tarni::Diagnostics
