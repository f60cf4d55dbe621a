#include "tests/support/Display.h"

#include <regex>
#include <sstream>
#include <stdexcept>

namespace tarni::test {

// Servers that start at the same moment may be in each other's way over the keymap.
Display::Display(int width, int height) {
  constexpr int kTries = 3;
  for (int tries = 1; !start(width, height); ++tries) {
    if (tries == kTries) throw std::runtime_error("Xvfb did not start: " + server_->output());
  }
}

bool Display::start(int width, int height) {
  const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
  server_ = std::make_unique<Program>(std::vector<std::string>{
      "Xvfb", "-displayfd", "1", "-screen", "0", screen, "-nolisten", "tcp", "-noreset"});
  // The number stands alone on a line; what the server complains of may come before it.
  std::smatch number;
  std::string said;
  const bool ready = eventually([&] {
    said = server_->output();
    return std::regex_search(said, number, std::regex("(?:^|\n)([0-9]+)\n")) ||
           !server_->isRunning();
  });
  if (!ready || !server_->isRunning()) return false;
  name_ = ":" + number[1].str();
  return true;
}

Program::Environment Display::environment() const {
  return {{"DISPLAY", name_}, {"QT_QPA_PLATFORM", "xcb"}, {"WAYLAND_DISPLAY", ""}};
}

void Display::act(const std::vector<std::string>& words) const {
  std::vector<std::string> command = {"xdotool"};
  command.insert(command.end(), words.begin(), words.end());
  run(command, environment());
}

// From "WINDOW=1\nX=12\nY=40\nWIDTH=…" for each.
std::vector<Desktop::Window> Display::windows(const std::string& title) const {
  std::vector<std::string> words = {"xdotool", "search", "--onlyvisible"};
  if (title.empty()) {
    words.insert(words.end(), {"--maxdepth", "1", ".*"});
  } else {
    words.insert(words.end(), {"--name", "^" + title + "$"});
  }
  words.insert(words.end(), {"getwindowgeometry", "--shell", "%@"});
  Program asked(words, environment());
  asked.wait(kPatience);
  std::istringstream lines(asked.output());
  std::vector<Window> all;
  for (std::string line; std::getline(lines, line);) {
    const auto equals = line.find('=');
    if (equals == std::string::npos) continue;
    const std::string name = line.substr(0, equals);
    if (name == "WINDOW") all.emplace_back();
    if (all.empty()) continue;
    const double value = std::stod(line.substr(equals + 1));
    if (name == "X") all.back().x = value;
    if (name == "Y") all.back().y = value;
    if (name == "WIDTH") all.back().width = value;
    if (name == "HEIGHT") all.back().height = value;
  }
  return all;
}

std::string Display::colorAt(int x, int y) const {
  const std::string pixel = "1x1+" + std::to_string(x) + "+" + std::to_string(y);
  const std::string text =
      run({"import", "-window", "root", "-crop", pixel, "-depth", "8", "txt:-"}, environment());
  return text.substr(text.rfind(" #") + 1, 7);
}

}  // namespace tarni::test
