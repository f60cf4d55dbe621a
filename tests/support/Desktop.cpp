#include "tests/support/Desktop.h"

#include "tests/support/Compositor.h"
#include "tests/support/Display.h"

namespace tarni::test {

std::unique_ptr<Desktop> Desktop::make(int scaleOnWayland, int width, int height) {
  if (scaleOnWayland == 0) return std::make_unique<Display>(width, height);
  return std::make_unique<Compositor>(width, height, scaleOnWayland);
}

void Desktop::addTo(Program::Environment& environment) const {
  for (const auto& [name, value] : this->environment()) environment[name] = value;
}

void Desktop::moveTo(int x, int y) const {
  act({"mousemove", std::to_string(x), std::to_string(y)});
}

void Desktop::click(int x, int y) const {
  act({"mousemove", std::to_string(x), std::to_string(y), "click", "1"});
}

}  // namespace tarni::test
