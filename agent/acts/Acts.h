// Acts: makes acts of a person's input events. A press, the moves and the release are one act, so
// are the two presses of a double click, the keys of a text, the turns of the wheel one way at one
// place. What came of an act (a value was chosen, a switch went over) is looked at before the
// next event and when the program is at rest; what it caused is not an act.
//
// The latest act may still grow: it is told when the program has come to rest, and again, under the
// same order number, when it has become more. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "agent/acts/Act.h"
#include "agent/acts/Outcome.h"
#include "platform/UIKit/InputObserver.h"

namespace tarni {

class Acts : public platform::InputObserver {
 public:
  // `place` is where the pointer is, from the view's upper left corner; null when the focus counts.
  using Portrayer = std::function<Portrait(const platform::UIViewRef& view,
                                           const std::optional<platform::CGPoint>& place)>;
  using Listener = std::function<void(const Act&)>;

  // Elements are portrayed before the application handles what a person does to them.
  Acts(Portrayer portray, Listener tell) : portray_(std::move(portray)), tell_(std::move(tell)) {}

  // False when the platform cannot tell what a person does.
  bool start();
  // A chord that makes a check of what the pointer rests on, in place of a key; empty for none.
  void setCheckKey(std::string chord) { checkKey_ = std::move(chord); }
  // Tells what is open.
  void stop();
  // Tells the latest act as it now is.
  void finish();

  void willHandle(const platform::InputEvent& event) noexcept override;

 private:
  void handle(const platform::InputEvent& event);
  void press(const platform::InputEvent& event);
  void move(const platform::InputEvent& event);
  void release(const platform::InputEvent& event);
  void wheel(const platform::InputEvent& event);
  void keyDown(const platform::InputEvent& event);
  void type(const platform::InputEvent& event);
  void pressKey(const platform::InputEvent& event, const std::string& chord);
  void keyUp(const platform::InputEvent& event);
  void check(const platform::InputEvent& event);
  void resize(const platform::InputEvent& event);

  bool isOpen(std::string_view kind, const platform::UIViewRef& view) const;
  bool goesOnTurning(const platform::InputEvent& event) const;
  bool addToMenu(const platform::UIViewRef& entry);
  Act& begin(std::string_view kind, const platform::InputEvent& event,
             const platform::UIViewRef& view);
  void lastsTo(double time);
  void settle();
  void readText();
  void tell();
  void tellAtRest();
  void rest();

  // The act that may still grow, with what it is about.
  struct Open {
    Act act;
    platform::UIViewWeakRef view;
    Outcome outcome;
    Portrait control;  // that the view stands in; null when it is the view or there is none
    bool isAmongChoices = false;  // that a click before may have opened
    double last = 0;              // event
    bool isTold = false;
  };
  // The click before on a control, which may have opened its choices.
  struct Before {
    long order = 0;
    double time = 0;
    Outcome outcome;
    Portrait control;
  };
  struct Press {  // of a button, or the first turn of the wheel
    bool isDown = false;
    bool isDrag = false;
    platform::PointerButton button{};
    platform::UIViewWeakRef window;
    platform::CGPoint point;
  };

  const std::shared_ptr<Acts*> self_ = std::make_shared<Acts*>(this);  // for what comes later
  const Portrayer portray_;
  const Listener tell_;
  std::string checkKey_;
  bool isStarted_ = false;
  bool isTellingPending_ = false;
  long orders_ = 0;
  std::optional<Open> open_;
  std::optional<Before> before_;
  Press press_;
  std::string loneModifier_;  // that is down, with nothing since
};

}  // namespace tarni
