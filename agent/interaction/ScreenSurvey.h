// ScreenSurvey: what one walk knows of every view below a root, so that whoever describes all of
// them need not go up the tree for each. It holds as long as nothing changes. Main thread.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "platform/UIKit/UIView.h"

namespace tarni {

class ScreenSurvey {
 public:
  // Nothing stands below a null root.
  explicit ScreenSurvey(const platform::UIViewRef& root);

  // The answers of KIFAdditions, of views below the root or not.
  bool isVisibleInViewHierarchy(const platform::UIViewRef& view) const;
  bool isVisibleInWindowFrame(const platform::UIViewRef& view) const;
  bool isProbablyTappable(const platform::UIViewRef& view) const;

 private:
  struct Place {
    std::size_t number;  // in the order of the walk
    std::size_t parent;  // its number
    std::size_t end;     // the number that follows those of everything below the view
    bool isVisibleInViewHierarchy;
    bool isVisibleInWindowFrame;
  };

  const Place* placeOf(const platform::UIViewRef& view) const;
  bool isDescendantOfView(const platform::UIViewRef& view,
                          const platform::UIViewRef& ancestor) const;

  std::vector<Place> places_;
  std::unordered_map<const platform::UIView*, std::size_t> numbers_;
};

}  // namespace tarni
