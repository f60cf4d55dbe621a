#include "agent/session/screen/Elements.h"

#include <algorithm>

#include "agent/core/state/MainThread.h"
#include "agent/session/protocol/SessionError.h"

namespace tarni::session {

using platform::UIViewRef;

Elements& Elements::sharedInstance() {
  assertMainThread();
  static auto* const shared = new Elements;
  return *shared;
}

Handle Elements::handleOf(const UIViewRef& view) {
  Known& known = known_[view.get()];
  // Another view may have got the place in memory of one that has gone.
  const bool isSame =
      known.handle != 0 && !known.view.owner_before(view) && !view.owner_before(known.view);
  if (isSame) return known.handle;
  if (known.handle != 0) views_.erase(known.handle);
  known = {next_++, view};
  const Handle handle = known.handle;
  views_.emplace(handle, view.get());
  if (known_.size() > roomBeforeCleaning_) forgetGone();
  return handle;
}

Handle Elements::handleOf(const UIViewRef& webView, const std::string& document, long node) {
  const Handle view = handleOf(webView);
  const auto first = knownPageElements_.lower_bound({view, "", 0});
  const bool isOther = first != knownPageElements_.end() && std::get<0>(first->first) == view &&
                       std::get<1>(first->first) != document;
  if (isOther) forgetPage(view);
  const auto [entry, isNew] = knownPageElements_.try_emplace({view, document, node}, next_);
  if (isNew) pageElements_.emplace(next_++, PageElement{webView, document, node});
  return entry->second;
}

UIViewRef Elements::viewOf(Handle handle) const {
  const auto text = std::to_string(handle);
  if (handle < 1 || handle >= next_) {
    throw SessionError(errors::kNoSuchElement, "no element was ever called " + text +
                                                   "; element.find and tree.get give handles");
  }
  if (pageElementOf(handle)) {
    throw SessionError(errors::kUnsupported,
                       "element " + text + " is in a page, where this method cannot reach");
  }
  const auto entry = views_.find(handle);
  const UIViewRef view = entry == views_.end() ? nullptr : known_.at(entry->second).view.lock();
  if (!view || !view->window()) {
    throw SessionError(errors::kStaleElement, "element " + text + " is no longer there");
  }
  return view;
}

const PageElement* Elements::pageElementOf(Handle handle) const {
  const auto entry = pageElements_.find(handle);
  return entry == pageElements_.end() ? nullptr : &entry->second;
}

// That of the document before: a web view shows one at a time.
void Elements::forgetPage(Handle view) {
  const auto begin = knownPageElements_.lower_bound({view, "", 0});
  const auto end = knownPageElements_.lower_bound({view + 1, "", 0});
  for (auto entry = begin; entry != end; ++entry) pageElements_.erase(entry->second);
  knownPageElements_.erase(begin, end);
}

// Each pass leaves room for as many again, so that a handle costs the same however many there are.
void Elements::forgetGone() {
  for (auto entry = known_.begin(); entry != known_.end();) {
    if (!entry->second.view.expired()) {
      ++entry;
      continue;
    }
    views_.erase(entry->second.handle);
    entry = known_.erase(entry);
  }
  std::erase_if(knownPageElements_, [this](const auto& entry) {
    return pageElements_.at(entry.second).webView.expired();
  });
  std::erase_if(pageElements_, [](const auto& entry) { return entry.second.webView.expired(); });
  roomBeforeCleaning_ = std::max<std::size_t>(1024, known_.size() * 2);
}

}  // namespace tarni::session
