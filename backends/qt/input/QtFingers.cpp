#include "backends/qt/input/QtFingers.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>
#include <QtWidgets/QWidget>
#include <algorithm>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {
namespace {

using platform::UITouchPhase;
using platform::UITouchRef;

QPointF locationInWindow(const UITouchRef& touch) {
  const platform::CGPoint point = touch->locationInView(nullptr);
  return {point.x, point.y};
}

// A program may switch off that Qt makes mouse events of touches that nobody took.
bool takesTouches(const QWindow& window) {
  return !window.inherits("QWidgetWindow") ||
         QCoreApplication::testAttribute(Qt::AA_SynthesizeMouseForUnhandledTouchEvents);
}

}  // namespace

void QtFingers::deliver(const platform::UIEvent& event) {
  liftAbandoned();
  const std::vector<UITouchRef>& touches = event.allTouches();
  std::vector<Step> steps;
  for (const UITouchRef& touch : touches) {
    Finger* const finger = touch->phase() == UITouchPhase::Began
                               ? begin(touch, touches.size() == 1 && fingers_.empty())
                               : find(touch);
    if (!finger) continue;
    const std::vector<State> states = statesAfter(touch, *finger);
    if (steps.size() < states.size()) steps.resize(states.size());
    for (std::size_t i = 0; i < states.size(); ++i) {
      steps[i].push_back({finger->identifier, states[i]});
    }
  }
  nextSteps_.insert(nextSteps_.end(), steps.begin(), steps.end());
  deliverNextStep();
}

void QtFingers::deliverNextStep() {
  if (nextSteps_.empty()) return;
  const Step step = std::move(nextSteps_.front());
  nextSteps_.pop_front();
  perform(step);
}

std::vector<QtFingers::State> QtFingers::statesAfter(const UITouchRef& touch, Finger& finger) {
  finger.position = locationInWindow(touch) - finger.origin;
  switch (touch->phase()) {
    case UITouchPhase::Began:
      if (!finger.scrollAreas.empty()) return {};
      return {State::Pressed};
    case UITouchPhase::Moved:
      return statesAfterMove(finger);
    case UITouchPhase::Stationary:
      // A long press.
      if (std::exchange(finger.scrollAreas, {}).empty()) return {};
      return {State::Pressed};
    case UITouchPhase::Ended:
    case UITouchPhase::Cancelled:
      if (std::exchange(finger.scrollAreas, {}).empty()) return {State::Released};
      return {State::Pressed, State::Released};
  }
  return {};
}

std::vector<QtFingers::State> QtFingers::statesAfterMove(Finger& finger) {
  if (finger.scrollAreas.empty()) return {State::Moved};
  const QPointF displacement = finger.position - finger.start;
  if (displacement.manhattanLength() < QGuiApplication::styleHints()->startDragDistance()) {
    return {};
  }
  finger.drag = QtScrollDrag::start(std::exchange(finger.scrollAreas, {}), displacement);
  if (finger.drag) return {State::Moved};
  return {State::Pressed, State::Moved};
}

QtFingers::Finger* QtFingers::begin(const UITouchRef& touch, bool isAlone) {
  QWindow* const native = touch->view() ? nativeWindowOf(touch->window()) : nullptr;
  if (!native) return nullptr;
  const QPointF location = locationInWindow(touch);
  Finger finger;
  finger.touch = touch;
  finger.identifier = freeIdentifier();
  finger.window = windowAt(native, location);
  finger.origin = originInTopLevel(finger.window);
  finger.start = location - finger.origin;
  finger.isMouse = !takesTouches(*finger.window) || !takesTouches(touch->view());
  if (QWidget* const widget = isAlone ? widgetOfView(touch->window()) : nullptr) {
    finger.scrollAreas = areasScrolledFrom(widget->childAt(location.toPoint()));
  }
  fingers_.push_back(std::move(finger));
  return &fingers_.back();
}

QtFingers::Finger* QtFingers::find(const UITouchRef& touch) {
  const auto found = std::find_if(fingers_.begin(), fingers_.end(), [&touch](const Finger& finger) {
    return finger.touch.lock() == touch;
  });
  return found == fingers_.end() ? nullptr : &*found;
}

QtFingers::Finger* QtFingers::find(int identifier) {
  const auto found =
      std::find_if(fingers_.begin(), fingers_.end(),
                   [identifier](const Finger& finger) { return finger.identifier == identifier; });
  return found == fingers_.end() ? nullptr : &*found;
}

int QtFingers::freeIdentifier() {
  int identifier = 1;
  while (find(identifier)) ++identifier;
  return identifier;
}

// A gesture may end with its finger down (a path of one point). Nothing moves that finger again; it
// is taken off outside the window, so that it clicks nothing.
void QtFingers::liftAbandoned() {
  Step away;
  Step release;
  for (Finger& finger : fingers_) {
    if (!finger.touch.expired()) continue;
    finger.scrollAreas.clear();
    finger.drag.reset();
    finger.position = QPointF(-1, -1) - finger.origin;
    away.push_back({finger.identifier, State::Moved});
    release.push_back({finger.identifier, State::Released});
  }
  if (away.empty()) return;
  perform(away);
  perform(release);
}

void QtFingers::perform(const Step& step) {
  std::vector<Batch> batches;
  std::vector<std::pair<QtScrollDrag, QPointF>> drags;
  for (const Action& action : step) {
    const auto finger = find(action.identifier);
    if (!finger) continue;
    const bool isRelease = action.state == State::Released;
    if (!finger->drag) {
      addPoint(batches, *finger, action.state);
    } else if (!isRelease) {
      drags.emplace_back(*finger->drag, finger->position - finger->start);
    }
    finger->isDown = !isRelease && !finger->drag;
    if (isRelease) fingers_.erase(fingers_.begin() + (finger - fingers_.data()));
  }
  addRestingFingers(batches, step);
  // From here on the program runs, and may come back with other touches.
  for (const auto& [drag, displacement] : drags) drag.scrollTo(displacement);
  for (const Batch& batch : batches) {
    if (!batch.window) continue;
    if (batch.isForMouse) {
      QtTouchScreen::mouse(*batch.window, batch.points.front());
    } else {
      QtTouchScreen::touch(*batch.window, batch.points);
    }
  }
}

void QtFingers::addPoint(std::vector<Batch>& batches, const Finger& finger, State state) {
  auto batch = std::find_if(batches.begin(), batches.end(), [&finger](const Batch& known) {
    return known.window == finger.window;
  });
  if (batch == batches.end()) batch = batches.insert(batch, {finger.window, finger.isMouse, {}});
  const QPointF position = state == State::Pressed ? finger.start : finger.position;
  batch->points.push_back({finger.identifier, state, position});
}

// An event of a touch screen names every finger that is down.
void QtFingers::addRestingFingers(std::vector<Batch>& batches, const Step& step) const {
  for (const Finger& finger : fingers_) {
    const bool isInStep = std::any_of(step.begin(), step.end(), [&finger](const Action& action) {
      return action.identifier == finger.identifier;
    });
    if (isInStep || !finger.isDown) continue;
    for (Batch& batch : batches) {
      if (batch.window != finger.window) continue;
      batch.points.push_back({finger.identifier, State::Stationary, finger.position});
    }
  }
}

}  // namespace tarni::qt
