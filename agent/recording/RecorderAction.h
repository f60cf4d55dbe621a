// RecorderAction: makes one recorded step from a touched view and queues it for the host tool.
//
// A step is made in three parts, so that only what needs the view holds up the application: it is
// described and drawn on the main thread; its picture may be encoded beside it. What is described
// is a draft; it becomes a step, and is told to the log as one, when it is queued.
#pragma once

#include <memory>
#include <string>

#include "agent/Queue/StepDraft.h"
#include "platform/QuartzCore/CGGeometry.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class ElementProperties;

// What a step is made of. The point is in the view's coordinates.
struct StepRequest {
  std::string action;
  platform::UIViewRef view;
  std::string data;
  platform::CGPoint point;
  // The application has not handled the touch yet: a switch is about to change.
  bool isTouchPending = false;
  // What the touch was refined to when it began; null to look for it now.
  platform::UIViewRef refined = nullptr;
};

class RecorderAction {
 public:
  // Builds the step and puts it, as an array of one, on RecorderQueue; for a tap inside a web view
  // it stores the picture of the touched area in the shared state instead. The element properties
  // are not used for a native step. Main thread. NSException when the view cannot be described.
  platform::Task<void> CreateRecorderAction(std::string action, platform::UIViewRef view,
                                            std::string data,
                                            std::shared_ptr<ElementProperties> properties, double x,
                                            double y);

  // The parts of it. The first two belong to the main thread, the last to any. A step can be played
  // without its picture: drawing or encoding that fails is logged and leaves it empty.
  StepDraftRef describeStep(const StepRequest& request) const;
  static platform::Task<void> drawStep(StepDraftRef draft);
  static void enqueueStep(const StepDraft& draft);

  // The step as it would be made now, for the case that the view does not outlive what comes; its
  // picture follows when the platform has drawn it. Null when there is none. Main thread.
  static StepDraftRef draftStep(StepRequest request);

  // True while the view is in a window that is on screen. Main thread.
  static bool standsInWindow(const platform::UIViewRef& view);
  // True while a person can see the view: it stands in such a window, and nothing hides it.
  static bool isShown(const platform::UIViewRef& view);
  // True while the view is, or stands in, the row of which the draft tells: rows come and go, and
  // their views are handed on. Main thread.
  static bool isInSameRow(const platform::UIViewRef& view, const StepDraft& draft);
  // What a person has typed into a text field or text view; empty for any other view. Main thread.
  static std::string typedText(const platform::UIViewRef& view);
  // What stands in the view now is not a person's: it is not recorded, unless it is changed. Main
  // thread.
  static void leaveOutTextOf(const platform::UIViewRef& view);

  // The view's text, or its class name when the text is empty. Main thread.
  std::string getLogicalNameOfElement(const platform::UIViewRef& view) const;
  // The place of the view among all views of its class, from 0. Main thread.
  long getClassNameIndexOfUIView(const platform::UIViewRef& view) const;
  // The switch that the view is or stands in, or null. Kept for callers from outside. Main thread.
  platform::UIViewRef getActualParentComponent(const platform::UIViewRef& view) const;
};

}  // namespace tarni
