#include "tests/support/Compositor.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <stdexcept>

namespace tarni::test {
namespace {

namespace fs = std::filesystem;

constexpr auto kSettings =
    "[core]\nidle-time=0\n"
    "[shell]\npanel-position=none\nlocking=false\n"
    "animation=none\nstartup-animation=none\nclose-animation=none\n";

sockaddr_un address(const fs::path& path) {
  sockaddr_un place{AF_UNIX, {}};
  path.string().copy(place.sun_path, sizeof place.sun_path - 1);
  return place;
}

}  // namespace

Compositor::Compositor() {
  char path[] = "/tmp/tarni-wayland-XXXXXX";
  if (!mkdtemp(path)) throw std::runtime_error("no folder for the compositor");
  folder_ = path;
  std::ofstream(folder_ / "weston.ini") << kSettings;
  server_ = std::make_unique<Program>(
      std::vector<std::string>{"weston", "--backend=headless-backend.so", "--use-pixman",
                               "--width=1280", "--height=1024", "--socket=wayland",
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
// them points count from the corner that the program's content begins at.
Program::Environment Compositor::environment() const {
  return {{"WAYLAND_DISPLAY", folder_ / "wayland"},
          {"QT_QPA_PLATFORM", "wayland"},
          {"QT_WAYLAND_DISABLE_WINDOWDECORATION", "1"},
          {"DISPLAY", ""}};
}

void Compositor::moveTo(int x, int y) const {
  tell("move " + std::to_string(x) + " " + std::to_string(y));
}

void Compositor::click(int x, int y) const {
  moveTo(x, y);
  tell("press");
  tell("release");
}

void Compositor::turnWheel(int notches) const {
  tell("wheel " + std::to_string(notches));
}

void Compositor::type(const std::string& text) const {
  tell("type " + text);
}

void Compositor::key(const std::string& name) const {
  tell("key " + name);
}

void Compositor::tell(const std::string& command) const {
  std::array<char, 1024> answer{};
  send(descriptor_, command.data(), command.size(), 0);
  const auto count = recv(descriptor_, answer.data(), answer.size(), 0);
  if (count != 0) {
    throw std::runtime_error("the hand cannot " + command + ": " +
                             (count > 0 ? answer.data() : "no answer") + "\n" + server_->output());
  }
}

}  // namespace tarni::test
