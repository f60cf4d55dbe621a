#include "agent/recording/OwnActs.h"

#include <algorithm>

#include "agent/WebView/WebView.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/MainThread.h"
#include "agent/elements/ViewWalk.h"
#include "agent/recording/RecorderAction.h"
#include "agent/recording/TypedText.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni {
namespace {

using platform::UIViewRef;
namespace uikit = platform::uikit;

bool isRecording() {
  return !GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted());
}

bool takesText(const UIViewRef& view) {
  return view->isKindOfClass(uikit::UITextField) || view->isKindOfClass(uikit::UITextView);
}

// The view itself, or what is in it; false ends the walk.
template <typename Visit>
void visitFields(const UIViewRef& root, Visit&& visit) {
  bool goesOn = !takesText(root) || visit(root, std::size_t{0});
  std::vector<WalkLevel> levels;
  walkSubviews(root, levels, [&](const WalkStep& step) {
    if (goesOn && takesText(step.view)) goesOn = visit(step.view, step.path.size());
    return goesOn;
  });
}

// A control has the focus together with the field in it.
std::vector<UIViewRef> focusedIn(const UIViewRef& root) {
  std::vector<UIViewRef> focused;
  std::size_t outermost = 0;
  visitFields(root, [&](const UIViewRef& view, std::size_t depth) {
    if (!focused.empty() && depth <= outermost) return false;
    if (!view->isFirstResponder()) return true;
    if (focused.empty()) outermost = depth;
    focused.push_back(view);
    return true;
  });
  return focused;
}

}  // namespace

platform::Task<void> OwnActs::begin() {
  assertMainThread();
  if (!isRecording()) co_return;
  try {
    TypedText::sharedInstance().follow();
    focused_ = focusedFields(nullptr);
    co_await WebView().ownActsFollow();
  } catch (...) {
    platform::logFailure("session channel");
  }
}

void OwnActs::settle() noexcept {
  platform::runGuarded("session channel", [this] {
    if (!isRecording()) return;
    WebView().ownActsEnd();
    const std::vector<Field> before = std::move(focused_);
    bool isTouched = false;
    const auto takeFromPerson = [&isTouched](const UIViewRef& view) {
      RecorderAction::leaveOutTextOf(view);
      isTouched = true;
    };
    for (const Field& field : before) {
      const UIViewRef view = field.view.lock();
      if (view && RecorderAction::typedText(view) != field.text) takeFromPerson(view);
    }
    focused_ = focusedFields(before.empty() ? nullptr : before.front().view.lock());
    for (Field& field : focused_) {
      const UIViewRef view = field.view.lock();
      const auto isOfView = [&view](const Field& known) { return known.view.lock() == view; };
      if (std::ranges::none_of(before, isOfView)) takeFromPerson(view);
      field.text = RecorderAction::typedText(view);
    }
    if (isTouched) TypedText::sharedInstance().setAside();
  });
}

void OwnActs::leaveOut(const UIViewRef& view) {
  visitFields(view, [](const UIViewRef& field, std::size_t) {
    RecorderAction::leaveOutTextOf(field);
    return true;
  });
}

// What had the focus last most often has it still.
std::vector<OwnActs::Field> OwnActs::focusedFields(const UIViewRef& last) {
  std::vector<UIViewRef> views;
  if (last && last->isFirstResponder()) {
    views = focusedIn(last);
  } else {
    for (const auto& window : platform::current().application->windowsWithKeyWindow()) {
      views = focusedIn(window);
      if (!views.empty()) break;
    }
  }
  std::vector<Field> fields;
  for (const UIViewRef& view : views) fields.push_back({view, RecorderAction::typedText(view)});
  return fields;
}

}  // namespace tarni
