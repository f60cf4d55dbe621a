// XpathHolderObject: a view with its XPath position and its GUID. Plain value; the view is kept
// weakly. Main thread. Kept for callers from outside.
#pragma once

#include <string>
#include <utility>

#include "platform/UIKit/UIView.h"

namespace tarni {

class XpathHolderObject {
 public:
  void setXpathUIView(const platform::UIViewRef& view) { view_ = view; }
  // Null once the view has gone.
  platform::UIViewRef getXpathUIView() const { return view_.lock(); }
  void setXpathOfUIView(std::string xpath) { xpath_ = std::move(xpath); }
  const std::string& getXpathOfUIView() const { return xpath_; }
  void setGuid(std::string guid) { guid_ = std::move(guid); }
  const std::string& getGuid() const { return guid_; }

 private:
  platform::UIViewWeakRef view_;
  std::string xpath_;
  std::string guid_;
};

}  // namespace tarni
