#include "agent/Queue/ElementProcessor.h"

namespace tarni {

ElementInfoRef ElementProcessor::getExactElementInfo(
    const std::vector<ElementInfoRef>& bucket) const {
  return getElementInfoAccordingToSubViewCount(bucket);
}

ElementInfoRef ElementProcessor::getElementInfoAccordingToSubViewCount(
    const std::vector<ElementInfoRef>& bucket) const {
  return bucket.empty() ? nullptr : bucket.back();
}

}  // namespace tarni
