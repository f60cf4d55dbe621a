#include "host/launch/ProgramRegistry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/launch/ProgramLauncher.h"

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

constexpr auto kSuffix = ".json";

fs::path folderIn(const char* runtime) {
  if (runtime != nullptr && *runtime == '/' && access(runtime, W_OK) == 0) {
    return fs::path(runtime) / "tarni";
  }
  return "/tmp/tarni-" + std::to_string(geteuid());
}

// Of a process that runs this tool; null for any other.
std::optional<fs::path> folderOfProcess(const fs::path& process) {
  std::error_code hidden;
  const auto tool = fs::read_symlink("/proc/self/exe").filename();
  if (fs::read_symlink(process / "exe", hidden).filename() != tool) return std::nullopt;
  constexpr std::string_view kVariable = "XDG_RUNTIME_DIR=";
  std::ifstream environment(process / "environ", std::ios::binary);
  for (std::string entry; std::getline(environment, entry, '\0');) {
    if (entry.starts_with(kVariable)) return folderIn(entry.c_str() + kVariable.size());
  }
  return folderIn(nullptr);
}

// Field 22 of the kernel's line; with the identifier it names a process for good. Empty when there
// is no such process. The program's name, the second field, may hold blanks and brackets.
std::string startTime(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  std::string line;
  std::getline(file, line);
  const auto end = line.rfind(')');
  if (end == std::string::npos) return "";
  std::istringstream fields(line.substr(end + 1));
  std::vector<std::string> values{std::istream_iterator<std::string>(fields), {}};
  constexpr std::size_t kStartTime = 22 - 3;
  const bool isAlive = values.size() > kStartTime && values.front() != "Z";
  return isAlive ? values[kStartTime] : "";
}

bool fitsAFile(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_' || c == '.';
}

bool fitsAFile(const std::string& name) {
  constexpr std::size_t kLongestName = 200;  // so that a suffix still fits
  return !name.empty() && name.size() <= kLongestName && name.front() != '.' &&
         std::all_of(name.begin(), name.end(), [](char c) { return fitsAFile(c); });
}

}  // namespace

bool isAlive(pid_t pid) {
  return !startTime(pid).empty();
}

ProgramRegistry::ProgramRegistry() : ProgramRegistry(folderIn(std::getenv("XDG_RUNTIME_DIR"))) {}

ProgramRegistry::ProgramRegistry(fs::path folder) : folder_(std::move(folder)) {
  mkdir(folder_.c_str(), S_IRWXU);
  struct stat info {};
  const bool isFolder = lstat(folder_.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
  if (!isFolder || info.st_uid != geteuid() || (info.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
    throw std::runtime_error("the folder " + folder_.string() +
                             " cannot be made or belongs to somebody else");
  }
}

void ProgramRegistry::checkName(const std::string& name) {
  if (fitsAFile(name)) return;
  constexpr std::size_t kEnoughToTell = 40;
  throw std::invalid_argument(
      "the name " + inQuotes(name.substr(0, kEnoughToTell)) +
      (name.size() > kEnoughToTell ? "…" : "") +
      " does not do: at most 200 letters, digits, '-', '_' and '.', and no '.' in front");
}

void ProgramRegistry::checkFree(const std::string& name) const {
  if (const auto other = find(name)) {
    throw std::runtime_error("process " + std::to_string(other->pid) + " already runs as \"" +
                             name + "\"");
  }
}

std::string ProgramRegistry::freeName(const std::string& wish) const {
  constexpr std::size_t kLongestBase = 100;
  std::string base = wish.substr(0, kLongestBase);
  std::replace_if(
      base.begin(), base.end(), [](char c) { return !fitsAFile(c); }, '_');
  if (!fitsAFile(base)) base = "program";
  if (!fitsAFile(base)) base = "program" + base;
  std::string name = base;
  for (int number = 2; find(name); ++number) {
    name = base;
    name.append("-").append(std::to_string(number));
  }
  return name;
}

void ProgramRegistry::add(const RegisteredProgram& program) const {
  const auto target = fileOf(program.name);
  auto part = target;
  part += "." + std::to_string(getpid());
  const Json entry = {{"pid", program.pid},
                      {"startTime", startTime(program.pid)},
                      {"command", program.command},
                      {"isolated", program.isIsolated}};
  std::ofstream file(part);
  file << compact(entry) << '\n';
  file.close();
  if (!file) throw std::runtime_error("cannot write " + part.string());
  fs::rename(part, target);
}

void ProgramRegistry::remove(const std::string& name) const {
  std::error_code ignored;
  fs::remove(fileOf(name), ignored);
}

std::optional<RegisteredProgram> ProgramRegistry::find(const std::string& name) const {
  if (!fitsAFile(name)) return std::nullopt;
  std::ifstream file(fileOf(name));
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const auto entry = readJson(text);
  if (!entry.is_object() || !entry.contains("pid") || !entry["pid"].is_number_integer()) {
    return std::nullopt;
  }
  const RegisteredProgram program{name, entry["pid"], textIn(entry, "command"),
                                  entry.value("isolated", Json(true)) != false};
  const auto started = startTime(program.pid);
  if (started.empty() || started != textIn(entry, "startTime")) {
    remove(name);
    return std::nullopt;
  }
  return program;
}

std::optional<RegisteredProgram> ProgramRegistry::findByNameOrProcess(
    const std::string& word) const {
  if (auto program = find(word)) return program;
  for (auto& program : all()) {
    if (std::to_string(program.pid) == word) return std::move(program);
  }
  return std::nullopt;
}

std::optional<std::string> ProgramRegistry::sessionOf(const RegisteredProgram& program) const {
  const auto path = sessionPath(folder_, program.pid);
  return fs::is_socket(path) ? std::optional(path.string()) : std::nullopt;
}

std::vector<RegisteredProgram> ProgramRegistry::all() const {
  std::vector<RegisteredProgram> programs;
  for (const auto& file : fs::directory_iterator(folder_)) {
    if (file.path().extension() != kSuffix) continue;
    if (auto program = find(file.path().stem())) programs.push_back(*std::move(program));
  }
  std::sort(programs.begin(), programs.end(),
            [](const auto& a, const auto& b) { return a.name < b.name; });
  return programs;
}

std::optional<fs::path> ProgramRegistry::folderElsewhere(const std::string& name) const {
  std::error_code gone;
  for (fs::directory_iterator entry("/proc", gone), end; !gone && entry != end;
       entry.increment(gone)) {
    const auto other = folderOfProcess(entry->path());
    const bool isElsewhere = other && *other != folder_ && fs::is_directory(*other, gone);
    if (isElsewhere && ProgramRegistry(*other).find(name)) return other;
  }
  return std::nullopt;
}

fs::path ProgramRegistry::fileOf(const std::string& name) const {
  return folder_ / (name + kSuffix);
}

}  // namespace tarni::host
