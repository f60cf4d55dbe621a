#include "tests/support/Display.h"

#include <regex>
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

void Display::moveTo(int x, int y) const {
  run({"xdotool", "mousemove", std::to_string(x), std::to_string(y)}, environment());
}

void Display::click(int x, int y) const {
  run({"xdotool", "mousemove", std::to_string(x), std::to_string(y), "click", "1"}, environment());
}

void Display::type(const std::string& text) const {
  run({"xdotool", "type", "--delay", "5", "--", text}, environment());
}

void Display::key(const std::string& name) const {
  run({"xdotool", "key", name}, environment());
}

std::string Display::colorAt(int x, int y) const {
  const std::string pixel = "1x1+" + std::to_string(x) + "+" + std::to_string(y);
  const std::string text =
      run({"import", "-window", "root", "-crop", pixel, "-depth", "8", "txt:-"}, environment());
  return text.substr(text.rfind(" #") + 1, 7);
}

}  // namespace tarni::test
