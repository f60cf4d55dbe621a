#include "tests/support/Display.h"

#include <unistd.h>

#include <stdexcept>

namespace tarni::test {
namespace {

// Of this process alone: a server that looks for a free one itself sees those of its own network
// namespace, and their files are everybody's.
std::string freeName() {
  static int made = 0;
  return ':' + std::to_string(100 + (getpid() + 1000 * made++) % 50000);
}

}  // namespace

Display::Display(int width, int height) : name_(freeName()) {
  const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
  server_ = std::make_unique<Program>(std::vector<std::string>{
      "Xvfb", name_, "-displayfd", "1", "-screen", "0", screen, "-nolisten", "tcp", "-noreset"});
  const bool answered =
      eventually([this] { return !server_->output().empty() || !server_->isRunning(); });
  if (!answered || !server_->isRunning()) {
    throw std::runtime_error("Xvfb did not start: " + server_->output());
  }
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
