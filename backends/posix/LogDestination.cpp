#include "backends/posix/LogDestination.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <string>

namespace tarni::posix {
namespace {

constexpr std::size_t kFlushedAt = 64 * 1024;

// How many bytes, at the start of the text, are of a character that a terminal may obey or that
// hides the order of the letters; 0 for any other character.
std::size_t steeringBytes(std::string_view text) {
  const auto isWithin = [&text](std::size_t at, unsigned first, unsigned last) {
    const unsigned byte = at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
    return byte >= first && byte <= last;
  };
  if (text.front() == '\t') return 0;
  if (isWithin(0, 0, ' ' - 1) || isWithin(0, 0x7F, 0x7F)) return 1;
  if (isWithin(0, 0xC2, 0xC2) && isWithin(1, 0x80, 0x9F)) return 2;  // U+0080 to U+009F
  if (!isWithin(0, 0xE2, 0xE2)) return 0;
  const bool separates = isWithin(1, 0x80, 0x80) && isWithin(2, 0xA8, 0xAE);  // U+2028 to U+202E
  const bool isolates = isWithin(1, 0x81, 0x81) && isWithin(2, 0xA6, 0xA9);   // U+2066 to U+2069
  return separates || isolates ? 3 : 0;
}

// A line stays one line, whatever is in it.
void appendPrintable(std::string& text, std::string_view line) {
  while (!line.empty()) {
    const std::size_t steering = steeringBytes(line);
    if (line.front() == '\n' || line.front() == '\r') {
      text += line.front() == '\n' ? "\\n" : "\\r";
    } else {
      text += steering > 0 ? '?' : line.front();
    }
    line.remove_prefix(std::max<std::size_t>(steering, 1));
  }
}

class DescriptorDestination : public LogDestination {
 public:
  explicit DescriptorDestination(int descriptor) : descriptor_(descriptor) {}

  void write(double time, std::string_view line) override {
    appendPrefix(time);
    appendPrintable(text_, line);
    text_ += '\n';
    if (text_.size() >= kFlushedAt) flush();
  }

  void flush() override {
    std::string_view rest = text_;
    while (!rest.empty()) {
      const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
      if (written > 0) {
        rest.remove_prefix(static_cast<std::size_t>(written));
      } else if (errno == EAGAIN) {
        pollfd writable{descriptor_, POLLOUT, 0};
        poll(&writable, 1, -1);
      } else if (errno != EINTR) {
        break;
      }
    }
    text_.clear();
  }

 private:
  void appendPrefix(double time) {
    const auto seconds = static_cast<std::time_t>(std::floor(time));
    const int milliseconds = static_cast<int>((time - std::floor(time)) * 1000);
    tm local{};
    localtime_r(&seconds, &local);
    std::array<char, 64> prefix;
    const std::size_t length = std::strftime(prefix.data(), prefix.size(), "%H:%M:%S", &local);
    text_.append(prefix.data(), length);
    std::snprintf(prefix.data(), prefix.size(), ".%03d tarni[%d]: ", milliseconds, getpid());
    text_ += prefix.data();
  }

  int descriptor_;
  std::string text_;
};

// The identity and the options of syslog are the application's, so the lines carry our name.
class SyslogDestination : public LogDestination {
 public:
  void write(double /*time*/, std::string_view line) override {
    std::string text;
    appendPrintable(text, line);
    syslog(LOG_USER | LOG_INFO, "tarni: %s", text.c_str());
  }
  void flush() override {}
};

bool isTrusted(uid_t owner) {
  return owner == geteuid() || owner == 0;
}

// The log has all that is typed: a new file is for this user alone, and neither a link nor a file
// that somebody else laid is written to. -1 when it cannot be opened.
int openPrivate(const std::string& path) {
  struct stat info {};
  const bool isOwnLink =
      lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode) && isTrusted(info.st_uid);
  const int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | (isOwnLink ? 0 : O_NOFOLLOW);
  const int file = open(path.c_str(), flags, 0600);
  if (file < 0 || fstat(file, &info) != 0) return file;
  if (S_ISCHR(info.st_mode) || isTrusted(info.st_uid)) return file;
  close(file);
  return -1;
}

}  // namespace

std::unique_ptr<LogDestination> openLogDestination(std::string_view target) {
  if (target == "stderr") return std::make_unique<DescriptorDestination>(STDERR_FILENO);
  auto systemLog = std::make_unique<SyslogDestination>();
  if (target.empty()) return systemLog;
  const std::string path(target);
  const int file = openPrivate(path);
  if (file >= 0) return std::make_unique<DescriptorDestination>(file);
  systemLog->write(0, "Cannot open the log file " + path);
  return systemLog;
}

}  // namespace tarni::posix
