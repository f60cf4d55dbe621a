// ElementProcessor: chooses the record of a bucket from which the step is made. Any thread.
#pragma once

#include <vector>

#include "agent/Queue/ElementInfo.h"

namespace tarni {

class ElementProcessor {
 public:
  // Null for an empty bucket.
  ElementInfoRef getExactElementInfo(const std::vector<ElementInfoRef>& bucket) const;
  // The record that was added last. Kept under its name, though no subviews are counted.
  ElementInfoRef getElementInfoAccordingToSubViewCount(
      const std::vector<ElementInfoRef>& bucket) const;
};

}  // namespace tarni
