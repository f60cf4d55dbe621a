// RecorderAction: makes one recorded step from a touched view and queues it for the host tool.
//
// A step is made in two parts: a draft, which reads and draws the view on the main thread, and its
// end, which encodes the picture and may run beside it.
#pragma once

#include <memory>
#include <string>

#include "agent/recording/MainRecorderAction.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class ElementProperties;

// Everything about a step that only the live view can tell.
class StepDraft {
 public:
  MainRecorderAction action;
  // Drawn, not encoded; null when nothing could be drawn.
  platform::UIImageRef image;
  // Set for a tap inside a web view, which makes no step: its picture waits for the page's step.
  bool isWebView = false;
};

// What a step is made of. The point is in the view's coordinates.
struct StepRequest {
  std::string action;
  platform::UIViewRef view;
  std::string data;
  platform::CGPoint point;
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

  // The logical name: the view's text, or its class name when the text is empty. Main thread.
  std::string getLogicalNameOfElement(const platform::UIViewRef& view) const;
  // The place of the view among all views of its class, from 0. Main thread.
  long getClassNameIndexOfUIView(const platform::UIViewRef& view) const;
  // The switch round the view, or null. Main thread.
  platform::UIViewRef getActualParentComponent(const platform::UIViewRef& view) const;
};

}  // namespace tarni
