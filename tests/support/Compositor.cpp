#include "tests/support/Compositor.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace tarni::test {
namespace {

namespace fs = std::filesystem;

constexpr auto kSettings =
    "[core]\nidle-time=0\n"
    "[shell]\npanel-position=none\nlocking=false\n"
    "animation=none\nstartup-animation=none\nclose-animation=none\n";

constexpr std::chrono::milliseconds kKeyHeld{30};

std::string nameOfKey(char character) {
  std::ostringstream name;
  name << 'U' << std::hex << std::setw(4) << std::setfill('0') << int{character};
  return name.str();
}

sockaddr_un address(const fs::path& path) {
  sockaddr_un place{AF_UNIX, {}};
  path.string().copy(place.sun_path, sizeof place.sun_path - 1);
  return place;
}

}  // namespace

Compositor::Compositor(int width, int height, int scale) {
  char path[] = "/tmp/tarni-wayland-XXXXXX";
  if (!mkdtemp(path)) throw std::runtime_error("no folder for the compositor");
  folder_ = path;
  std::ofstream(folder_ / "weston.ini") << kSettings;
  server_ = std::make_unique<Program>(
      std::vector<std::string>{"weston", "--backend=headless-backend.so", "--use-pixman",
                               "--width=" + std::to_string(width),
                               "--height=" + std::to_string(height),
                               "--scale=" + std::to_string(scale), "--socket=wayland",
                               "--config=" + (folder_ / "weston.ini").string(),
                               "--modules=" + built("lib/libtest-weston-hand.so")},
      Program::Environment{{"XDG_RUNTIME_DIR", folder_}, {"HAND_SOCKET", folder_ / "hand"}});
  const bool isUp = eventually([&] {
    return !server_->isRunning() ||
           server_->output().find("weston-desktop-shell'") != std::string::npos;
  });
  if (!isUp || !server_->isRunning()) {
    throw std::runtime_error("weston did not start: " + server_->output());
  }
  descriptor_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  const sockaddr_un own = address(folder_ / "tester");
  const sockaddr_un hand = address(folder_ / "hand");
  const timeval patience{kPatience.count(), 0};
  setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  if (bind(descriptor_, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 ||
      connect(descriptor_, reinterpret_cast<const sockaddr*>(&hand), sizeof hand) != 0) {
    throw std::runtime_error("the compositor has no hand: " + server_->output());
  }
}

Compositor::~Compositor() {
  close(descriptor_);
  server_.reset();
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

// Qt draws frames of its own around windows where the compositor draws none, as this one: without
// them points count from the corner that the program's content begins at. Text is written by keys,
// as by the compositor's text input Qt 6 tells a field that has no text of a change.
Program::Environment Compositor::environment() const {
  return {{"WAYLAND_DISPLAY", folder_ / "wayland"},
          {"QT_QPA_PLATFORM", "wayland"},
          {"QT_WAYLAND_DISABLE_WINDOWDECORATION", "1"},
          {"QT_IM_MODULE", "compose"},
          {"DISPLAY", ""}};
}

void Compositor::act(const std::vector<std::string>& words) const {
  auto word = words.begin();
  const auto next = [&word, &words] { return word == words.end() ? "" : *word++; };
  const auto argument = [&] {
    std::string text = next();
    for (; text == "--" || text == "--delay"; text = next()) {
      if (text == "--delay") next();
    }
    return text;
  };
  while (word != words.end()) {
    const std::string verb = next();
    const std::string first = argument();
    if (verb == "sleep") {
      std::this_thread::sleep_for(std::chrono::duration<double>(std::stod(first)));
    } else if (verb == "click") {
      tell("mousedown " + first);
      tell("mouseup " + first);
    } else if (verb == "key") {
      strike(first);
    } else if (verb == "type") {
      for (const char c : first) strike(nameOfKey(c));
    } else if (verb.starts_with("mousemove")) {
      tell(verb + " " + first + " " + next());
    } else {
      tell(verb + " " + first);
    }
  }
}

// Held as long as a person does: what a key opens is the compositor's to allow while it is down.
void Compositor::strike(const std::string& chord) const {
  std::istringstream names(chord);
  std::vector<std::string> keys;
  for (std::string name; std::getline(names, name, '+');) {
    keys.push_back(name == "alt" ? "Alt_L" : name == "ctrl" ? "Control_L" : name);
  }
  for (const auto& key : keys) tell("keydown " + key);
  std::this_thread::sleep_for(kKeyHeld);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) tell("keyup " + *key);
}

std::vector<Desktop::Window> Compositor::windows(const std::string& title) const {
  std::istringstream lines(tell("windows"));
  std::vector<Window> all;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    Window window;
    std::string name;
    words >> window.x >> window.y >> window.width >> window.height >> std::ws;
    std::getline(words, name);
    if (title.empty() || name == title) all.push_back(window);
  }
  return {all.rbegin(), all.rend()};
}

std::string Compositor::colorAt(int x, int y) const {
  return tell("color " + std::to_string(x) + " " + std::to_string(y));
}

std::string Compositor::tell(const std::string& command) const {
  std::array<char, 4096> answer{};
  send(descriptor_, command.data(), command.size(), 0);
  const auto count = recv(descriptor_, answer.data(), answer.size(), 0);
  const std::string said(answer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
  if (count < 0 || said.starts_with("cannot")) {
    throw std::runtime_error("the hand: " + command + ": " + said + "\n" + server_->output());
  }
  return said;
}

}  // namespace tarni::test
