// ScriptedScreen: a few elements that a scripted agent answers playback commands about, the way the
// agent would, so that tests decide what is on screen and when it changes.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace tarni::test {

struct ScriptedElement {
  std::string className;
  std::string xpath;
  std::string text;                 // what it shows
  std::string recordedText = text;  // what recording reads
  bool visible = true;
  bool enabled = true;
  bool tappable = true;
  bool editable = false;
  std::string state = {};  // of a switch: "true" or "false"
  int width = 80;
};

class ScriptedScreen {
 public:
  explicit ScriptedScreen(std::vector<ScriptedElement> elements) : elements_(std::move(elements)) {}

  // The answer to one line. Thread-safe, as are all others.
  std::string answer(const std::string& line);

  // Called before every description of elements, with how many there have been.
  std::function<void(std::vector<ScriptedElement>&, int)> onLook;
  // Whether taps and typed text take effect.
  bool obeys = true;

  // "clickelement 0", "sendkeysonelement 1 text": the element's place and the data.
  std::vector<std::string> deeds() const;

 private:
  std::string find(const std::string& tag, const std::string& type, const std::string& value);
  std::string describe(const std::string& tag);
  std::string act(const std::string& name, std::size_t index, const std::string& data);

  mutable std::mutex mutex_;
  std::vector<ScriptedElement> elements_;
  std::vector<std::string> deeds_;
  int looks_ = 0;
  int generation_ = 0;  // identifiers hold until the next find
};

}  // namespace tarni::test
