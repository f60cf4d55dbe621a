// Desktop: a screen that nobody sees, with a hand that moves a real pointer and types on a real
// keyboard.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/support/Program.h"

namespace tarni::test {

class Desktop {
 public:
  struct Window {
    double x = 0, y = 0, width = 0, height = 0;
  };

  // Of X, or of Wayland with `scaleOnWayland` times as many pixels each way.
  static std::unique_ptr<Desktop> make(int scaleOnWayland, int width = 1280, int height = 1024);

  Desktop() = default;
  Desktop(const Desktop&) = delete;
  virtual ~Desktop() = default;

  // What a program needs to show itself here.
  virtual Program::Environment environment() const = 0;
  void addTo(Program::Environment& environment) const;
  // Does what the words of xdotool say: "mousemove", "10", "20", "click", "1", …
  virtual void act(const std::vector<std::string>& words) const = 0;
  // Those of that title, all for none, back to front, popups among them.
  virtual std::vector<Window> windows(const std::string& title = "") const = 0;
  // Puts windows beside each other, where the one that is clicked comes before the others.
  virtual void arrange() const {}
  // What the screen shows there: "#00FF00".
  virtual std::string colorAt(int x, int y) const = 0;

  // Screen coordinates, in points: on a screen of two pixels a point every second pixel.
  void moveTo(int x, int y) const;
  void click(int x, int y) const;
  void type(const std::string& text) const { act({"type", "--delay", "5", "--", text}); }
  void key(const std::string& name) const { act({"key", name}); }
};

}  // namespace tarni::test
