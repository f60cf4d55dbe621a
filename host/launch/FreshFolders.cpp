#include "host/launch/FreshFolders.h"

#include <sys/stat.h>
#include <unistd.h>

#include <random>
#include <stdexcept>
#include <system_error>

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

struct Folder {
  const char* variable;
  const char* name;
};
constexpr Folder kFolders[] = {
    {"HOME", "home"},
    {"XDG_CONFIG_HOME", "config"},
    {"XDG_DATA_HOME", "data"},
    {"TMPDIR", "temporary"},
    {"XDG_CACHE_HOME", "cache"},
    {"XDG_STATE_HOME", "state"},
    {"XDG_RUNTIME_DIR", "runtime"},
};

}  // namespace

FreshFolders::FreshFolders()
    : folder_(fs::temp_directory_path() / ("tarni-fresh-" + std::to_string(getpid()) + "-" +
                                           std::to_string(std::random_device()()))) {}

void FreshFolders::make() const {
  // Nobody else's, whatever its name was taken for.
  if (mkdir(folder_.c_str(), S_IRWXU) != 0) {
    throw std::runtime_error("cannot make the folder " + folder_.string());
  }
  for (const auto& folder : kFolders) {
    fs::create_directory(folder_ / folder.name);
    fs::permissions(folder_ / folder.name, fs::perms::owner_all);
  }
}

FreshFolders::~FreshFolders() {
  struct stat info {};
  if (lstat(folder_.c_str(), &info) != 0 || info.st_uid != geteuid()) return;
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void FreshFolders::addTo(std::map<std::string, std::string>& environment) const {
  for (const auto& folder : kFolders) environment[folder.variable] = folder_ / folder.name;
}

}  // namespace tarni::host
