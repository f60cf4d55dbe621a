#include "tests/support/Desktop.h"

namespace tarni::test {

void Desktop::moveTo(int x, int y) const {
  act({"mousemove", std::to_string(x), std::to_string(y)});
}

void Desktop::click(int x, int y) const {
  act({"mousemove", std::to_string(x), std::to_string(y), "click", "1"});
}

}  // namespace tarni::test
