// Elements: the handles under which clients know views and elements of pages. A handle lives as
// long as what it stands for and is never given out twice; finding other things makes none void.
// Main thread.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>

#include "platform/UIKit/UIView.h"

namespace tarni::session {

using Handle = std::int64_t;

// An element of a page, by what the page's own script calls it.
struct PageElement {
  platform::UIViewWeakRef webView;
  std::string document;  // which of the pages that were shown there
  long node = 0;
};

class Elements {
 public:
  static Elements& sharedInstance();

  Handle handleOf(const platform::UIViewRef& view);
  Handle handleOf(const platform::UIViewRef& webView, const std::string& document, long node);

  // Throws SessionError: no such element for a handle that was never given out, stale element
  // reference for one whose view has gone or stands in no window, unsupported operation for one in
  // a page.
  platform::UIViewRef viewOf(Handle handle) const;
  // Null for the handle of a view.
  const PageElement* pageElementOf(Handle handle) const;

 private:
  void forgetGone();
  void forgetPage(Handle view);

  struct Known {
    Handle handle = 0;
    platform::UIViewWeakRef view;
  };
  Handle next_ = 1;
  std::unordered_map<const platform::UIView*, Known> known_;
  std::unordered_map<Handle, const platform::UIView*> views_;
  std::map<std::tuple<Handle, std::string, long>, Handle> knownPageElements_;
  std::unordered_map<Handle, PageElement> pageElements_;
  std::size_t roomBeforeCleaning_ = 1024;
};

}  // namespace tarni::session
