// Selenium: the server of Selenium Grid on this machine: Java, and the archive that it runs. One
// thread.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarni::host::grid {

// Java or the archive is missing or does not fit; the text says what to install.
class NoSelenium : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Selenium {
 public:
  // Looks where `named` says, else in $TARNI_SELENIUM_JAR, else in the folders of npm from the
  // current one upwards and of the whole system. Starts it once, for its version. Throws
  // NoSelenium.
  explicit Selenium(const std::filesystem::path& named);

  const std::string& version() const { return version_; }  // "4.48.0"
  // The words that run it as "hub" or "node".
  std::vector<std::string> line(const std::string& role,
                                const std::filesystem::path& configuration) const;

 private:
  std::filesystem::path jar_;
  std::string version_;
};

}  // namespace tarni::host::grid
