// Selector: by what a client names elements. All that it says must hold. Main thread.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "agent/session/protocol/Method.h"
#include "agent/session/screen/Pages.h"
#include "agent/session/screen/Survey.h"

namespace tarni::session {

struct Match {
  platform::UIViewRef view;
  Place place;
};

class Selector {
 public:
  // The parameters that make a selector, for the rows of methods that take one.
  static std::span<const Parameter> parameters();

  // From an object with such members; others are not looked at. Throws SessionError: invalid
  // selector for one that says nothing or what it cannot mean, invalid argument for wrong types.
  explicit Selector(const Json& members);

  // Of the views, in the order of the tree, at most `limit` (0 for all); `pages` gets the web views
  // that were passed. Throws SessionError when the element to search in has gone.
  std::vector<Match> find(std::size_t limit, std::vector<platform::UIViewRef>* pages) const;
  // False for what says of its elements what only views have.
  bool fitsPages() const {
    return !kind_ && !group_ && !focused_ && (!xpath_ || isPositionInPage());
  }
  // Of the elements of these pages.
  platform::Task<std::vector<PageNode>> findIn(std::vector<platform::UIViewRef> pages,
                                               std::size_t limit) const;
  // As a person would say it, for errors.
  std::string inWords() const;

 private:
  bool matches(const Seen& seen) const;
  std::vector<Match> byPath() const;
  bool isPositionInPage() const;

  Json members_;
  std::optional<std::string> identifier_, label_, text_, textContains_, placeholder_, class_, kind_,
      xpath_, group_, windowTitle_;
  std::optional<bool> visible_, focused_;
  std::optional<long> within_;
};

// The answer of a search: "elements", the descriptions of both.
Result answerOf(const std::vector<Match>& matches, const std::vector<PageNode>& nodes);

}  // namespace tarni::session
