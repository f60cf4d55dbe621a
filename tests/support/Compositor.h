// Compositor: a desktop of Wayland (weston), whose hand's events the compositor sends to programs
// as those of devices.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/Desktop.h"

namespace tarni::test {

class Compositor : public Desktop {
 public:
  // Throws when it does not come up. Its screen has `scale` times as many pixels each way.
  explicit Compositor(int width = 1280, int height = 1024, int scale = 1);
  ~Compositor() override;

  Program::Environment environment() const override;
  void act(const std::vector<std::string>& words) const override;
  std::vector<Window> windows(const std::string& title = "") const override;
  void arrange() const override { tell("arrange"); }
  std::string colorAt(int x, int y) const override;

 private:
  // Has the hand do that (see tests/wayland) and waits until it is done. Throws when it cannot.
  std::string tell(const std::string& command) const;
  void strike(const std::string& chord) const;

  std::filesystem::path folder_;
  int descriptor_ = -1;
  std::unique_ptr<Program> server_;
};

}  // namespace tarni::test
