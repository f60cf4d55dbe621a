// StepDraft: a recorded step before its picture is encoded. Made on the main thread; whoever has it
// in hand may read it on any.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/QuartzCore/CGGeometry.h"
#include "platform/UIKit/UIImage.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

struct StepDraft {
  // Null values are left out of the step.
  using Properties = std::vector<std::pair<const char*, std::optional<std::string>>>;

  std::string actionName;
  std::string data;
  Properties object;
  Properties parent;
  platform::UIViewWeakRef recordedView;
  // Which row of a list or table the view is or stands in; null for none.
  struct Row {
    std::optional<std::pair<long, long>> place;  // where the platform tells it
    std::string text;
  };
  std::optional<Row> row;
  // Drawn, not encoded; null until then, and when nothing can be drawn.
  platform::UIImageRef picture;
  // A tap inside a web view, in the coordinates of the recorded view: the page makes the step.
  bool isInWebView = false;
  platform::CGPoint pointInWebView;
};
using StepDraftRef = std::shared_ptr<StepDraft>;

}  // namespace tarni
