// InputDevices: a mouse and a keyboard of the agent's. The pointer's left button is a finger of
// which "sendEvent:" hears nothing; there is nothing that a second button would do. Main thread.
#pragma once

#include <set>
#include <string>

#include "backends/headless/View.h"
#include "platform/UIKit/InputDevices.h"
#include "platform/UIKit/InputObserver.h"

namespace tarni::headless {

class Application;

class InputDevices final : public platform::InputDevices {
 public:
  // In the agent's hands, or in a person's, whose doing is shown to the observer of input.
  enum class Doer { Agent, Person };

  explicit InputDevices(Application& application, Doer doer = Doer::Agent)
      : application_(application), doer_(doer) {}

  platform::Task<void> movePointer(platform::UIWindowRef window, platform::CGPoint point) override;
  // Throws for buttons that the platform lacks.
  platform::Task<void> setButton(platform::PointerButton button, bool isDown) override;
  // Scrolls the innermost scroll view there.
  platform::Task<void> turnWheel(double right, double down) override;
  // Types characters; "Control+a" selects all for what is typed next, "Backspace" takes one away,
  // and "Enter" starts a line where there are lines.
  platform::Task<void> setKey(std::string key, bool isDown) override;
  platform::Task<void> commitText(std::string text) override;

 private:
  platform::Task<void> sendTouch(platform::UITouchPhase phase);
  // A person's, where the keys go.
  void showKeys(platform::InputKind kind, const std::string& key, const std::string& text) const;
  // Whose input is shown to who observes it.
  bool isPersons() const { return doer_ == Doer::Person; }
  static double uptime();
  View* focused() const;
  // Takes the text out that "Control+a" has selected, if that has still the focus.
  bool takeSelection();

  Application& application_;
  const Doer doer_;
  std::weak_ptr<platform::UIView> window_;
  platform::CGPoint point_;
  platform::UITouchRef touch_;  // while the left button is down
  bool isShiftDown_ = false;
  std::weak_ptr<View> selected_;  // whose text is, all of it
  std::set<std::string> chord_;   // what is down that makes no text of keys
};

}  // namespace tarni::headless
