// Secrets: the values of what a session names alone, given with a play. Plain value, any thread.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tarni::host {

class Secrets {
 public:
  // From "NAME=VALUE". Throws std::invalid_argument for what is none.
  void add(const std::string& assignment);
  // Takes those of the names that are not given yet from the environment: TARNI_SECRET_ and the
  // name in capitals, with _ for all but letters and digits. The names that are still missing.
  std::vector<std::string> complete(const std::vector<std::string>& names);
  static std::string variableOf(const std::string& name);

  // Throws std::invalid_argument for a name that is not given.
  const std::string& valueOf(const std::string& name) const;
  // The text with the values made unreadable.
  std::string masked(std::string text) const;

 private:
  std::map<std::string, std::string> values_;
};

}  // namespace tarni::host
