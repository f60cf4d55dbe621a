// FreshFolders: empty folders for what a program keeps, and for where it looks for another one of
// its kind, gone with their owner: a program that starts in them starts as if for the first time.
// Any thread, one at a time.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace tarni::host {

class FreshFolders {
 public:
  // Chooses where they are to be.
  FreshFolders();
  FreshFolders(const FreshFolders&) = delete;
  FreshFolders& operator=(const FreshFolders&) = delete;
  ~FreshFolders();

  // Throws std::runtime_error when they cannot be made.
  void make() const;

  // The variables that name them: HOME, XDG_CONFIG_HOME and so on.
  void addTo(std::map<std::string, std::string>& environment) const;

 private:
  std::filesystem::path folder_;
};

}  // namespace tarni::host
