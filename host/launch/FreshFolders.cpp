#include "host/launch/FreshFolders.h"

#include <stdlib.h>

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

FreshFolders::FreshFolders() {
  auto name = (fs::temp_directory_path() / "tarni-fresh-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make the folder " + name);
  folder_ = name;
  for (const auto& folder : kFolders) {
    fs::create_directory(folder_ / folder.name);
    fs::permissions(folder_ / folder.name, fs::perms::owner_all);
  }
}

FreshFolders::~FreshFolders() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void FreshFolders::addTo(std::map<std::string, std::string>& environment) const {
  for (const auto& folder : kFolders) environment[folder.variable] = folder_ / folder.name;
}

}  // namespace tarni::host
