#include "tests/programs/RealProgram.h"

#include <fstream>
#include <regex>

namespace tarni::test {

namespace fs = std::filesystem;

RealProgram::RealProgram(std::vector<std::string> command) : command_(std::move(command)) {}

void RealProgram::SetUp() {
  Program::Environment environment = agentEnvironment();
  environment["WAYLAND_DISPLAY"] = "";
  const std::string platform = GetParam();
  if (platform == "xcb" || platform == "wayland") {
    desktop_ = Desktop::make(platform == "wayland" ? 1 : 0);
    desktop_->addTo(environment);
  }
  environment["HOME"] = environment["XDG_RUNTIME_DIR"] = environment["TMPDIR"] = home_.path;
  environment["XDG_CONFIG_HOME"] = environment["XDG_DATA_HOME"] = environment["XDG_CACHE_HOME"] =
      "";
  // By the renderer that needs no graphics card, and without the sandbox, which root does not get.
  environment["QT_QUICK_BACKEND"] = "software";
  environment["QTWEBENGINE_DISABLE_SANDBOX"] = "1";
  const std::string bus = "unix:path=" + (home_.path / "bus").string();
  environment["DBUS_SESSION_BUS_ADDRESS"] = bus;
  if (needsBus_) {
    Program::Environment session = environment;
    session["LD_PRELOAD"] = "";
    bus_ = std::make_unique<Program>(
        std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--address=" + bus},
        session);
    ASSERT_TRUE(eventually([this] { return fs::exists(home_.path / "bus"); })) << bus_->output();
  }
  environment["LC_ALL"] = environment["LANGUAGE"] = language_;
  if (scale_ != 1) environment["QT_SCALE_FACTOR"] = std::to_string(scale_);
  program_ = std::make_unique<Program>(command_, environment);
  playback_ = std::make_unique<Playback>();
  std::smatch version;
  const std::string said = output();
  if (std::regex_search(said, version, std::regex("uses (Qt [0-9.]+)"))) toolkit_ = version[1];
}

// One file a case, which write_table collects.
void RealProgram::TearDown() {
  const auto& info = *testing::UnitTest::GetInstance()->current_test_info();
  const std::string suite = info.test_suite_name();
  const std::string name = info.name();
  const nlohmann::ordered_json row = {{"program", suite.substr(suite.find('/') + 1)},
                                      {"toolkit", toolkit_},
                                      {"case", name.substr(0, name.find('/'))},
                                      {"platform", GetParam()},
                                      {"works", !HasFailure()}};
  const fs::path folder = built("programs");
  fs::create_directories(folder);
  const std::string file = std::regex_replace(suite + "." + name, std::regex("/"), "-") + ".json";
  std::ofstream(folder / file) << row.dump() << '\n';
}

std::string RealProgram::await(const std::string& tag, const std::string& text) const {
  return playback_->await(tag, "text", text);
}

bool RealProgram::isShown(const std::string& tag, const std::string& text) const {
  return eventually([&] { return !playback_->find(tag, "text", text).empty(); });
}

void RealProgram::press(const std::string& tag, const std::string& text) const {
  playback_->command("clickelement", await(tag, text));
}

void RealProgram::choose(const std::vector<std::string>& entries) const {
  for (const std::string& entry : entries) press("UIActionButton", entry);
}

std::vector<std::string> RealProgram::shown(const std::string& tag) const {
  std::vector<std::string> elements;
  for (const auto& element :
       playback_->ask({{"functionname", "ai_findelements"}, {"tagname", tag}})) {
    if (element["isVisibleInViewHierarchy"] == "true") elements.push_back(element["elementID"]);
  }
  return elements;
}

void RealProgram::openAtStart(const std::string& name, const std::string& contents) {
  std::ofstream(home_.path / name) << contents;
  command_.push_back(home_.path / name);
}

}  // namespace tarni::test
