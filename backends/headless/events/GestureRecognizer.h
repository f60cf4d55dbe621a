// Gesture recognizers: they follow the touches of their view and of all views below it, and call
// the application's action. Once one recognizes its gesture, the touched view and the other
// recognizers of the touch are cancelled. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "backends/headless/View.h"

namespace tarni::headless {

class GestureRecognizer {
 public:
  enum class State { Possible, Began, Changed, Ended, Cancelled, Failed };
  using Action = std::function<void()>;
  using Touches = std::vector<platform::UITouchRef>;

  GestureRecognizer(platform::Class cls, Action action) : class_(cls), action_(std::move(action)) {}
  virtual ~GestureRecognizer() = default;

  platform::Class getClass() const { return class_; }
  // Null while the recognizer belongs to no view.
  View* view() const { return view_; }
  State state() const { return state_; }
  bool isRecognizing() const { return state_ == State::Began || state_ == State::Changed; }
  bool hasRecognized() const { return isRecognizing() || state_ == State::Ended; }
  std::size_t numberOfTouches() const { return touches().size(); }
  // The middle of the touches, in window coordinates.
  platform::CGPoint locationInWindow() const;
  // Whether tapped controls below the view keep their touches from this recognizer.
  virtual bool yieldsToControls() const { return false; }

  // --- called by the view and by the event dispatch
  void setView(View* view) { view_ = view; }
  // Touches of one event that have come to `phase`.
  void handle(platform::UITouchPhase phase, const Touches& touches);
  // Another recognizer won, or the touches are gone.
  void cancel();

 protected:
  // All touches that are down, in the order in which they came.
  Touches touches() const;
  // Called before `began` when no touch was down.
  virtual void reset() {}
  virtual void began() = 0;
  virtual void moved() = 0;
  // Called while `touches()` still holds the ones that end.
  virtual void ended(const Touches& ending) = 0;
  // Sets the state and runs the action.
  void recognize(State state);
  void fail() { state_ = State::Failed; }

  static double distance(platform::CGPoint a, platform::CGPoint b);
  // The middle of the touches that stay when some end.
  platform::CGPoint middleWithout(const Touches& ending) const;

 private:
  void forget(const Touches& touches);

  // Weak: a finger that goes away without having ended is no longer there.
  std::vector<std::weak_ptr<platform::UITouch>> touches_;
  platform::Class class_;
  Action action_;
  View* view_ = nullptr;
  State state_ = State::Possible;
};

class TapGestureRecognizer : public GestureRecognizer {
 public:
  explicit TapGestureRecognizer(Action action, std::size_t touchesRequired = 1,
                                int tapsRequired = 1);
  bool yieldsToControls() const override { return true; }

 protected:
  void reset() override { most_ = 0; }
  void began() override;
  void moved() override;
  void ended(const Touches& ending) override;

 private:
  std::size_t touchesRequired_;
  int tapsRequired_;
  int taps_ = 0;
  double lastTap_ = 0;
  double start_ = 0;
  std::size_t most_ = 0;  // touches down at once
  platform::CGPoint startLocation_;
};

class PanGestureRecognizer : public GestureRecognizer {
 public:
  explicit PanGestureRecognizer(Action action, platform::Class cls = panClass());
  static platform::Class panClass();
  // Asked once the touches have moved far enough; false lets the others have them.
  void setShouldBegin(std::function<bool()> shouldBegin) { shouldBegin_ = std::move(shouldBegin); }
  // How far the touches have come since they began, along the axes of `view`.
  platform::CGPoint translationInView(const View& view) const;

 protected:
  void reset() override { translation_ = {}; }
  void began() override;
  void moved() override;
  void ended(const Touches& ending) override;

 private:
  std::function<bool()> shouldBegin_;
  platform::CGPoint translation_;  // in window coordinates
  platform::CGPoint last_;
};

}  // namespace tarni::headless
