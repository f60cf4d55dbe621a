// ViewList: the subviews of one view. There is a list in each view, so it takes no more memory than
// its views do. GUI thread.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/UIKit/UIView.h"

namespace tarni::qt {

class ViewList {
 public:
  std::span<const platform::UIViewRef> views() const { return {views_.get(), count_}; }

  // What `collect` puts into an empty vector; the list as it is when that answers false. Stays
  // where it is when nothing changed.
  template <typename Collect>
  std::span<const platform::UIViewRef> renew(Collect&& collect) {
    // Taken out meanwhile: collecting asks the program's models and properties, which may ask back.
    std::vector<platform::UIViewRef> views = std::move(spare());
    if (collect(views)) take(views);
    views.clear();
    spare() = std::move(views);
    return this->views();
  }

 private:
  static std::vector<platform::UIViewRef>& spare();
  void take(std::vector<platform::UIViewRef>& views);

  std::unique_ptr<platform::UIViewRef[]> views_;
  std::uint32_t count_ = 0;
};

}  // namespace tarni::qt
