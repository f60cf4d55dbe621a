// Display: a desktop on a virtual X screen.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/support/Desktop.h"

namespace tarni::test {

class Display : public Desktop {
 public:
  // Starts Xvfb on the first free display. Throws when it does not come up.
  explicit Display(int width = 1280, int height = 1024);

  // ":N"
  const std::string& name() const { return name_; }
  Program::Environment environment() const override;
  void act(const std::vector<std::string>& words) const override;
  // One that closes meanwhile ends the search.
  std::vector<Window> windows(const std::string& title = "") const override;
  std::string colorAt(int x, int y) const override;

 private:
  bool start(int width, int height);

  std::string name_;
  std::unique_ptr<Program> server_;
};

}  // namespace tarni::test
