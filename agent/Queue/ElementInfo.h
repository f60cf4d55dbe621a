// ElementInfo: one touch on its way from event capture to the recording worker. Main thread, unless
// said otherwise.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "agent/Queue/StepDraft.h"
#include "platform/QuartzCore/CGGeometry.h"
#include "platform/UIKit/UIEvent.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class ElementProperties;

class ElementInfo {
 public:
  // Never followed: the application refills its one touches event for the next touch. Kept for
  // callers from outside.
  void addEvent(const platform::UIEvent* event) { event_ = event; }
  const platform::UIEvent* getEvent() const { return event_; }

  // The action name; set once before the record is queued. Any thread reads it.
  void addAction(std::string action) { action_ = std::move(action); }
  const std::string& getAction() const { return action_; }

  // Held weakly: null once the view has gone.
  void addUIView(const platform::UIViewRef& view) { view_ = view; }
  platform::UIViewRef getUIView() const { return view_.lock(); }

  void addDataArgs(std::string data) { dataArgs_ = std::move(data); }
  const std::string& getDatArgs() const { return dataArgs_; }

  // In the view's coordinates.
  void addTouchedPoint(platform::CGPoint point) { touchedPoint_ = point; }
  platform::CGPoint getTouchedPoint() const { return touchedPoint_; }

  // Null for a touch.
  void setElementProperties(std::shared_ptr<ElementProperties> properties) {
    elementProperties_ = std::move(properties);
  }
  const std::shared_ptr<ElementProperties>& getElementProperties() const {
    return elementProperties_;
  }

  // The step as the touch found its view, for a view that is gone when the worker comes to it.
  void setDraft(StepDraftRef draft) { draft_ = std::move(draft); }
  const StepDraftRef& getDraft() const { return draft_; }

  // The text fields that there were when the touch came; null when nobody looked.
  using TextFields = std::optional<std::vector<platform::UIViewWeakRef>>;
  void setTextFields(TextFields fields) { textFields_ = std::move(fields); }
  const TextFields& getTextFields() const { return textFields_; }

 private:
  const platform::UIEvent* event_ = nullptr;
  std::string action_;
  platform::UIViewWeakRef view_;
  std::string dataArgs_;
  platform::CGPoint touchedPoint_;
  std::shared_ptr<ElementProperties> elementProperties_;
  StepDraftRef draft_;
  TextFields textFields_;
};
using ElementInfoRef = std::shared_ptr<ElementInfo>;

}  // namespace tarni
