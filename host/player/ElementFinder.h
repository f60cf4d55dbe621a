// ElementFinder: finds the element of a step in the program as it stands now, by the first of its
// locators that fits one element alone. What comes late is waited for: the first locator has some
// time to itself before the others count, as what is still being built would be misread. So has the
// title that the window had: a program that is still at work has another one. Any thread, one at a
// time; throws as SessionClient::call does.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/player/Played.h"
#include "host/session_client/SessionClient.h"

namespace tarni::host {

struct FoundElement {
  Json description;
  std::size_t locator = 0;     // of the element's, that found it
  bool isFirstWay = true;      // not so when another way was there before
  std::string waitedFor = {};  // "2.0 s for …", when that was long enough to be asked about

  long handle() const;
  bool isInPage() const;
};

class ElementFinder {
 public:
  explicit ElementFinder(SessionClient& client) : client_(client) {}

  // `element` as a step has it. Throws StepFailure when the time has passed.
  FoundElement await(const Json& element, Deadline deadline);

 private:
  // A locator, or what is left of it without what a translation changes.
  struct Way {
    Json find;
    std::size_t locator;
  };
  static std::vector<Way> waysTo(const Json& element);

  struct Look {
    std::optional<FoundElement> found = {};
    std::vector<std::size_t> matches = {};  // of each way that was tried, at most kEnough
  };

  FoundElement awaitFound(const Json& element, const std::vector<Way>& ways, Deadline deadline);
  void awaitWindow(const Json& element, Deadline deadline);
  // Of what `wait` does.
  template <typename Wait>
  void noteWait(const std::string& what, const Wait& wait);
  Look look(const std::vector<Way>& ways, std::size_t most);
  void awaitOnly(const Json& locator, Deadline deadline);
  [[noreturn]] void explain(const Json& element, const std::vector<Way>& ways, const Look& look);

  SessionClient& client_;
  std::set<std::string> strangeTitles_;  // that were waited for in vain
  std::string waitedFor_;                // of the element that is looked for
};

}  // namespace tarni::host
