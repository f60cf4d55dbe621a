// AiAPI: describes all views of a kind, with their pictures, for a host tool that finds elements
// from a picture of the screen. Made fresh for each use; main thread.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class AiAPI {
 public:
  // Clears UIViewMemoryCache and describes every view of the type (empty: all) in the current
  // window, hidden or not, filing each under its "elementID". All of them are drawn first;
  // described is what stands there then, and a view that has gone by that time is left out.
  platform::Task<nlohmann::ordered_json> getAllViewsInformation(std::string viewType) const;
  // The same for any window; null has no views.
  platform::Task<nlohmann::ordered_json> getAllViewsInformation(std::string viewType,
                                                                platform::UIWindowRef window) const;

  // The description of one view, which it files in UIViewMemoryCache. Kept for
  // callers from outside.
  platform::Task<nlohmann::ordered_json> getViewProperty(platform::UIViewRef view) const;

  // "width", "height", "x", "y" in window coordinates, with two decimals.
  nlohmann::ordered_json getRectObjectOfView(const platform::UIViewRef& view) const;

  bool isViewScrollable(const platform::UIViewRef& view) const;
  bool IsActuallyTappable(const platform::UIViewRef& view) const;
  bool IsImageTypeOfObject(const platform::UIViewRef& view) const;
  std::string convertBooleanToString(bool value) const;

  // The Base64 JPEG of the current window; empty when there is none.
  platform::Task<std::string> getBase64ImageOfCurrentWindow() const;
};

}  // namespace tarni
