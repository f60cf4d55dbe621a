// Display: a virtual X screen with a hand that moves a real pointer and types on a real keyboard.
#pragma once

#include <memory>
#include <string>

#include "tests/support/Program.h"

namespace tarni::test {

class Display {
 public:
  // Starts Xvfb on the first free display. Throws when it does not come up.
  explicit Display(int width = 1280, int height = 1024);

  // ":N"
  const std::string& name() const { return name_; }
  // What a program needs to show itself here.
  Program::Environment environment() const;

  // Screen coordinates in pixels.
  void moveTo(int x, int y) const;
  void click(int x, int y) const;
  void type(const std::string& text) const;
  void key(const std::string& name) const;
  // What the screen shows there: "#00FF00".
  std::string colorAt(int x, int y) const;

 private:
  bool start(int width, int height);

  std::string name_;
  std::unique_ptr<Program> server_;
};

}  // namespace tarni::test
