// ElementSpy: describes the element under the finger, with its ancestors, for a host tool that
// spies instead of recording. Made fresh for each touch; main thread.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "platform/QuartzCore/CGGeometry.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class ElementSpy {
 public:
  // Picks the element at `touchPoint` (coordinates of `touchedView`), highlights it, files it and
  // its ancestors in UIViewStorage and enqueues their descriptions on RecorderQueue. False, with
  // nothing enqueued, when the element is a web view: its page describes itself.
  bool createSpyHierarchy(const platform::UIViewRef& touchedView, platform::CGPoint touchPoint);

  // The description of one view: texts, and "parent" with those of its superview.
  nlohmann::ordered_json createSpyProperties(const platform::UIViewRef& view) const;

  // The recording text, else the accessibility identifier, else the class name.
  std::string getLogicalNameOfElement(const platform::UIViewRef& view) const;
};

}  // namespace tarni
