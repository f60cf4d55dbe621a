// Control: a UIControl. It follows one touch at a time and sends control events to the
// application's actions. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "backends/headless/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::headless {

namespace ControlEvent {
inline constexpr std::uint32_t TouchDown = 1U << 0;
inline constexpr std::uint32_t TouchDragInside = 1U << 2;
inline constexpr std::uint32_t TouchDragOutside = 1U << 3;
inline constexpr std::uint32_t TouchUpInside = 1U << 6;
inline constexpr std::uint32_t TouchUpOutside = 1U << 7;
inline constexpr std::uint32_t TouchCancel = 1U << 8;
inline constexpr std::uint32_t ValueChanged = 1U << 12;
inline constexpr std::uint32_t EditingDidBegin = 1U << 16;
inline constexpr std::uint32_t EditingChanged = platform::UIControlEventEditingChanged;
inline constexpr std::uint32_t EditingDidEnd = 1U << 18;
}  // namespace ControlEvent

class Control : public View, public platform::UIControl {
 public:
  using Action = std::function<void()>;

  explicit Control(platform::Class cls = platform::uikit::UIControl) : View(cls) {}

  // Runs `action` for each of these control events.
  void addAction(std::uint32_t events, Action action);
  void onTap(Action action) { addAction(ControlEvent::TouchUpInside, std::move(action)); }

  void sendActions(std::uint32_t events);
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;

  // A disabled control takes touches and does nothing with them.
  bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled) { setContent(enabled_, enabled); }
  // While a finger presses it.
  bool isHighlighted() const { return highlighted_; }

  // Says that an action of the control runs an event loop of its own: touches that hit it are then
  // delivered from the run loop, and their sender goes on as soon as that loop runs.
  bool opensNestedLoop() const { return opensNestedLoop_; }
  void setOpensNestedLoop(bool opens) { opensNestedLoop_ = opens; }

  bool handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) override;
  bool prefersItselfToRecognizers() const override { return enabled_; }

 protected:
  // What the control does by itself when it is tapped, before its touch-up-inside actions run.
  virtual void tapped(platform::CGPoint /*point*/) {}
  // How far outside its bounds, in points, a finger that began inside still presses the control.
  virtual double touchMargin() const { return 0; }

 private:
  void touchEnded(platform::CGPoint point);
  bool isInside(platform::CGPoint point) const;

  std::vector<std::pair<std::uint32_t, Action>> actions_;
  const platform::UITouch* trackedTouch_ = nullptr;  // compared, never followed
  bool enabled_ = true;
  bool highlighted_ = false;
  bool opensNestedLoop_ = false;
};

}  // namespace tarni::headless
