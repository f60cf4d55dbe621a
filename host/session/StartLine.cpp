#include "host/session/StartLine.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace tarni::host {

namespace fs = std::filesystem;

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

}  // namespace tarni::host
