// Compositor: a Wayland compositor without a screen (weston), with a hand whose pointer and
// keyboard it sends to programs as those of devices.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "tests/support/Program.h"

namespace tarni::test {

class Compositor {
 public:
  // Throws when it does not come up.
  Compositor();
  Compositor(const Compositor&) = delete;
  ~Compositor();

  // What a program needs to show itself here.
  Program::Environment environment() const;

  // Pixels from the corner of the uppermost window or popup.
  void moveTo(int x, int y) const;
  void click(int x, int y) const;
  void turnWheel(int notches) const;
  void type(const std::string& text) const;
  // As xkbcommon names it.
  void key(const std::string& name) const;

 private:
  // Has the hand do that (see tests/wayland) and waits until it is done. Throws when it cannot.
  void tell(const std::string& command) const;

  std::filesystem::path folder_;
  int descriptor_ = -1;
  std::unique_ptr<Program> server_;
};

}  // namespace tarni::test
