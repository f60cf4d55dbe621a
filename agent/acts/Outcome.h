// Outcome: what an act on a view can bring about beyond itself, and whether it did: a control has
// another value, a switch went over, a node was opened. Main thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "agent/acts/Act.h"
#include "platform/UIKit/UIItems.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class Outcome {
 public:
  Outcome() = default;
  // As things are before the act. `view` may be null.
  explicit Outcome(const platform::UIViewRef& view);

  // Changes the act to what came of it. Null when it is about the element that it has already;
  // otherwise the element that it is about now.
  platform::UIViewRef apply(Act& act) const;
  // The control whose value can be chosen; null when there is none.
  platform::UIViewRef control() const { return control_.lock(); }

 private:
  bool isOtherOfThatText(const platform::UIValueControl& control,
                         std::optional<std::size_t> choice) const;
  bool isSameRow(const platform::UIViewRef& view) const;
  platform::UIViewRef rowNow() const;

  platform::UIViewWeakRef view_;
  platform::UIViewWeakRef control_;
  std::string value_;
  std::optional<std::size_t> choice_;  // among several of the same text
  platform::UIViewWeakRef toggle_;
  bool wasOn_ = false;
  platform::UIViewWeakRef node_;  // the arrow beside a row, if it tells its state itself
  platform::UIViewWeakRef cell_;
  platform::UIViewWeakRef rows_;  // where it stands among its like
  std::string rowText_;
  platform::ItemPlace place_;
  bool wasExpanded_ = false;
};

}  // namespace tarni
