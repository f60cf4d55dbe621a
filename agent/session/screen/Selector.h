// Selector: by what a client names elements. All that it says must hold. Main thread.
#pragma once

#include <string>
#include <vector>

#include "agent/session/screen/Criteria.h"
#include "agent/session/screen/Pages.h"
#include "agent/session/screen/Survey.h"

namespace tarni::session {

struct Match {
  platform::UIViewRef view;
  Place place;
};

class Selector {
 public:
  // Throws SessionError (invalid selector) for what cannot be meant.
  explicit Selector(Criteria criteria);

  // Of the views, in the order of the tree, at most `limit` (0 for all); `pages` gets the web views
  // that were passed. Throws SessionError when the element to search in has gone.
  std::vector<Match> find(std::size_t limit, std::vector<platform::UIViewRef>* pages) const;
  // Whether it fits a view; where this stands among the views does not count.
  bool fits(const Seen& seen) const;
  // False for what says of its elements what only views have.
  bool fitsPages() const {
    const bool isOfViews =
        criteria_.kind || criteria_.group || criteria_.focused || criteria_.selected;
    return !isOfViews && (!criteria_.xpath || isPositionInPage());
  }
  // Of the elements of these pages.
  platform::Task<std::vector<PageNode>> findIn(std::vector<platform::UIViewRef> pages,
                                               std::size_t limit) const;
  // As a person would say it, for errors.
  std::string inWords() const;

 private:
  std::vector<Match> byPath() const;
  bool isPositionInPage() const;

  Criteria criteria_;
  std::string className_, part_;  // of a text, both in lower case
};

// The answer of a search: "elements", the descriptions of both.
Result answerOf(const std::vector<Match>& matches, const std::vector<PageNode>& nodes);

}  // namespace tarni::session
