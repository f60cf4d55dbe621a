// RealProgram: a program that nobody here wrote, with the agent in it, on a screen of its own. Each
// case is one thing that people do in it; what came of it goes into the table of docs/programs.md
// (write_table makes it), under the case's name in words.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/Desktop.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::test {

// A page for browsers: its title and its button change together.
inline constexpr auto kShop =
    "<title>Shop</title>"
    "<button onclick=\"document.title = this.textContent = 'Sold'\">Buy</button>";

// The parameter is the platform of the toolkit: "xcb" or "wayland", with a desktop of its own, or
// "offscreen".
class RealProgram : public testing::TestWithParam<const char*> {
 protected:
  explicit RealProgram(std::vector<std::string> command);

  void SetUp() override;
  void TearDown() override;

  const Playback& playback() const { return *playback_; }
  std::string output() const { return program_->output(); }

  // The only element with the text, once it is there; throws when it does not come.
  std::string await(const std::string& tag, const std::string& text) const;
  bool isShown(const std::string& tag, const std::string& text) const;
  // Presses it once it is there.
  void press(const std::string& tag, const std::string& text) const;
  // Entries of menus, one after the other.
  void choose(const std::vector<std::string>& entries) const;
  // The elements of a class that a person sees in the key window.
  std::vector<std::string> shown(const std::string& tag) const;

  // Makes a file in the program's home and has the program open it when it starts.
  void openAtStart(const std::string& name, const std::string& contents);
  // Has the program start in a session with a bus, without which some do not.
  void needSessionBus() { needsBus_ = true; }
  // Has the program start in that language of the desktop's ("de_DE.UTF-8").
  void speak(const std::string& language) { language_ = language; }
  // Has it start on a screen with that many pixels a point.
  void scale(double pixels) { scale_ = pixels; }

 private:
  std::vector<std::string> command_;
  const Folder home_;
  bool needsBus_ = false;
  std::string language_ = "C.UTF-8";
  double scale_ = 1;
  std::unique_ptr<Desktop> desktop_;
  std::unique_ptr<Program> bus_;
  std::unique_ptr<Program> program_;
  std::unique_ptr<Playback> playback_;
  std::string toolkit_;
};

inline std::string platformName(const testing::TestParamInfo<const char*>& info) {
  return info.param;
}

inline auto platforms() {
  return testing::Values("xcb", "wayland", "offscreen");
}

}  // namespace tarni::test
