#include "host/session/StartLine.h"

#include <wordexp.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

std::optional<pid_t> pidOf(const fs::path& folder) {
  const auto name = folder.filename().string();
  pid_t pid = 0;
  const auto result = std::from_chars(name.data(), name.data() + name.size(), pid);
  if (result.ec != std::errc{} || result.ptr != name.data() + name.size()) return std::nullopt;
  return pid;
}

// What a descriptor of a socket links to, "socket:[12345]", for every socket on the port.
std::set<std::string> socketsOn(std::uint16_t port) {
  std::set<std::string> sockets;
  for (const auto* table : {"/proc/self/net/tcp", "/proc/self/net/tcp6"}) {
    std::ifstream file(table);
    std::string line;
    std::getline(file, line);  // the heading
    while (std::getline(file, line)) {
      std::istringstream fields(line);
      const std::vector<std::string> values{std::istream_iterator<std::string>(fields), {}};
      constexpr std::size_t kLocal = 1;
      constexpr std::size_t kInode = 9;
      if (values.size() <= kInode) continue;
      const auto& local = values[kLocal];
      const auto colon = local.rfind(':');
      unsigned number = 0;
      std::from_chars(local.data() + colon + 1, local.data() + local.size(), number, 16);
      if (number == port && values[kInode] != "0") {
        sockets.insert("socket:[" + values[kInode] + "]");
      }
    }
  }
  return sockets;
}

bool holdsOneOf(const std::set<std::string>& sockets, const fs::path& process) {
  std::error_code error;
  for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code gone;
    if (sockets.contains(fs::read_symlink(entry->path(), gone).string())) return true;
  }
  return false;
}

}  // namespace

std::vector<std::string> startLineOf(pid_t pid) {
  const auto process = fs::path("/proc") / std::to_string(pid);
  std::ifstream file(process / "cmdline", std::ios::binary);
  std::vector<std::string> words;
  for (std::string word; std::getline(file, word, '\0');) words.push_back(word);
  if (words.empty()) return words;
  auto& program = words.front();
  std::error_code error;
  const auto folder = fs::read_symlink(process / "cwd", error);
  if (!error && program.find('/') != std::string::npos) {
    program = (folder / program).lexically_normal().string();
  }
  return words;
}

std::optional<pid_t> processServing(std::uint16_t port) {
  const auto sockets = socketsOn(port);
  if (sockets.empty()) return std::nullopt;
  std::error_code error;
  for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
       entry.increment(error)) {
    const auto pid = pidOf(entry->path());
    if (pid && holdsOneOf(sockets, entry->path())) return pid;
  }
  return std::nullopt;
}

std::vector<std::string> wordsOf(const std::string& line) {
  wordexp_t expanded{};
  const int failure = wordexp(line.c_str(), &expanded, WRDE_NOCMD | WRDE_UNDEF);
  std::vector<std::string> words;
  if (failure == 0) words.assign(expanded.we_wordv, expanded.we_wordv + expanded.we_wordc);
  if (failure == 0 || failure == WRDE_NOSPACE) wordfree(&expanded);
  if (words.empty()) throw std::invalid_argument("\"" + line + "\" is no start-up line");
  return words;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const auto& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string programName(const std::vector<std::string>& startLine) {
  return startLine.empty() ? "" : fs::path(startLine.front()).filename().string();
}

}  // namespace tarni::host
