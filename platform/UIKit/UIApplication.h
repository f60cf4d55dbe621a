// The application object, its screen and its alerts. Main thread only.
#pragma once

#include <any>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Task.h"
#include "platform/UIKit/InputObserver.h"
#include "platform/UIKit/PaintObserver.h"
#include "platform/UIKit/RunLoopObserver.h"
#include "platform/UIKit/UIEvent.h"
#include "platform/UIKit/UIView.h"

namespace tarni::platform {

inline constexpr const char* kCFRunLoopDefaultMode = "kCFRunLoopDefaultMode";

enum class CFRunLoopRunResult { Finished = 1, Stopped = 2, TimedOut = 3, HandledSource = 4 };

// What may have changed among the views that are shown since somebody asked before.
struct ViewChanges {
  // False: anything may have.
  bool areKnown = false;
  // What is told of these, and of those that they stand in, may be different. Where all views
  // stand, which there are and which of them are hidden is as it was.
  std::vector<UIViewRef> views;
};

class UIApplication {
 public:
  virtual ~UIApplication() = default;

  // The window that the user faces; null when there is none.
  virtual UIWindowRef keyWindow() const = 0;
  // The key window and all others that are shown.
  virtual std::vector<UIWindowRef> windowsWithKeyWindow() const = 0;

  // Those of them that take touches, front to back, the key window first: none that a modal window
  // keeps from the user.
  virtual std::vector<UIWindowRef> windowsThatTakeInput() const = 0;
  // Makes the window the key window and brings it to the front, as a finger on it does. What keeps
  // a finger from it only until it is touched beside (an open menu) is closed.
  virtual Task<void> makeKeyWindow(UIWindowRef window) = 0;

  // While somebody keeps what this gives, views are asked and drawn only, many of them one after
  // the other. The backend may keep what it works out for one of them for the next ones (what
  // stands where, say), until it is let go of or the application runs. Null when it keeps nothing.
  virtual std::shared_ptr<void> holdStill() { return nullptr; }

  // Since the last call. A backend names no views unless it hears of every change there is.
  virtual ViewChanges takeViewChanges() { return {}; }

  // A fresh touch with nothing set.
  virtual UITouchRef makeTouch() = 0;
  // The one touches event of the application, cleared and refilled for every send.
  virtual UIEvent& _touchesEvent() = 0;
  // Dispatches the event as a finger's would be, through the method "sendEvent:" of the class
  // UIApplication, so that an exchanged implementation sees it. Ends once the application has been
  // given the event, even while the application is still inside its handling (a modal dialog).
  virtual Task<void> sendEvent(UIEvent& event) = 0;

  // Lets the application run for `seconds` in the named mode. The main queue is not served
  // meanwhile.
  virtual Task<CFRunLoopRunResult> runLoopRunInMode(std::string mode, double seconds,
                                                    bool returnAfterSourceHandled) = 0;

  // One observer; null takes it off. It is called from then on, and lives until it is taken off.
  virtual void setRunLoopObserver(RunLoopObserver* observer) = 0;
  // The same for the one observer of what a person does. False on a platform that cannot tell.
  virtual bool setInputObserver(InputObserver*) { return false; }
  // The same for the one observer of what is painted.
  virtual bool setPaintObserver(PaintObserver*) { return false; }
  // Grows with all that the main thread does, the agent's blocks included: between two equal
  // answers it has waited, and nothing in the application is different. Null where the platform
  // cannot tell, as before the first question on the main thread. Any thread.
  virtual std::optional<std::uint64_t> workCount() { return std::nullopt; }
  // What the main thread has been busy with since it woke, as the observer will be told. Any
  // thread; empty when it is not known.
  virtual std::string currentWork() const { return {}; }

  // Hands the address to the program that the system has for it. False when there is none.
  virtual bool openURL(std::string_view url) = 0;

  // The associated object of the application object under that key (retained, not atomic); empty
  // at first. It goes with the application object.
  virtual std::any& associatedObject(const void* key) { return associatedObjects_[key]; }

 private:
  std::map<const void*, std::any> associatedObjects_;
};

// Of windows that are shown, back to front: those that a finger can reach, front to back, the key
// window first. One whose middle lies below another that takes the touch there (that of an alert)
// is out of reach.
std::vector<UIWindowRef> windowsInReach(const std::vector<UIWindowRef>& shown,
                                        const UIWindowRef& key);

class UIScreen {
 public:
  virtual ~UIScreen() = default;
  virtual CGRect bounds() const = 0;
  // Pixels a point.
  virtual double scale() const = 0;
};

// An alert that is on screen.
class UIAlertView {
 public:
  virtual ~UIAlertView() = default;
  virtual void dismissWithClickedButtonIndex(long index, bool animated) = 0;
};

class UIAlerts {
 public:
  virtual ~UIAlerts() = default;
  // Shows an alert without title. Null buttons are left out. Null when it cannot be shown. It must
  // not take the focus away from the application, nor appear among its views.
  virtual std::shared_ptr<UIAlertView> show(std::string message,
                                            std::optional<std::string> cancelButtonTitle,
                                            std::optional<std::string> otherButtonTitle) = 0;
};

}  // namespace tarni::platform
