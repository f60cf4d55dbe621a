#include "host/player/ElementFinder.h"

#include <algorithm>

#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/session/Step.h"

namespace tarni::host {

using std::chrono::milliseconds;

namespace {

constexpr std::size_t kMostStrange = 3;
constexpr std::size_t kEnough = 10;  // elements that a locator fits
// That the first locator has to itself.
constexpr milliseconds kTimeToBeCertain{2'000};
// How long one wait for the first locator keeps from looking for the others.
constexpr milliseconds kBetweenLooks{500};

milliseconds timeUntil(Deadline deadline) {
  return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(deadline - Clock::now()));
}

}  // namespace

long FoundElement::handle() const {
  return description.value("element", 0L);
}

bool FoundElement::isInPage() const {
  return description.contains("page");
}

// A position holds in a window whose title is in another language, too.
std::vector<ElementFinder::Way> ElementFinder::waysTo(const Json& element) {
  std::vector<Way> ways;
  const auto locators = locatorsIn(element);
  for (std::size_t i = 0; i < locators.size(); ++i) {
    ways.push_back({locators[i], i});
    if (!locators[i].contains("xpath") || !locators[i].contains("windowTitle")) continue;
    Json anywhere = locators[i];
    anywhere.erase("windowTitle");
    ways.push_back({std::move(anywhere), i});
  }
  return ways;
}

FoundElement ElementFinder::await(const Json& element, Deadline deadline) {
  const auto ways = waysTo(element);
  if (ways.empty()) throw StepFailure("the step says no way to find its element");
  waitedFor_.clear();
  auto found = awaitFound(element, ways, deadline);
  found.waitedFor = std::move(waitedFor_);
  return found;
}

FoundElement ElementFinder::awaitFound(const Json& element, const std::vector<Way>& ways,
                                       Deadline deadline) {
  const auto certain = Clock::now() + std::min(kTimeToBeCertain, timeUntil(deadline) / 2);
  awaitWindow(element, certain);
  if (auto first = look(ways, 1); first.found) return *std::move(first.found);
  noteWait("that " + locatorInWords(ways.front().find) + " fits one alone",
           [&] { awaitOnly(ways.front().find, certain); });
  while (true) {
    auto all = look(ways, ways.size());
    if (all.found) return *std::move(all.found);
    if (Clock::now() >= deadline) explain(element, ways, all);
    awaitOnly(ways.front().find, std::min(deadline, Clock::now() + kBetweenLooks));
  }
}

// In another language every title is strange.
void ElementFinder::awaitWindow(const Json& element, Deadline deadline) {
  const auto title = textIn(objectIn(element, "near"), "window");
  const bool isStrange = strangeTitles_.size() >= kMostStrange || strangeTitles_.contains(title);
  if (title.empty() || isStrange) return;
  noteWait("a window called " + inQuotes(title), [&] {
    if (!client_.comesTrue({{"window", title}}, timeUntil(deadline))) strangeTitles_.insert(title);
  });
}

template <typename Wait>
void ElementFinder::noteWait(const std::string& what, const Wait& wait) {
  const auto begin = Clock::now();
  wait();
  const std::chrono::duration<double> took = Clock::now() - begin;
  if (took < kWorthSaying) return;
  addWord(waitedFor_, inSeconds(took.count()) + " for " + what);
}

ElementFinder::Look ElementFinder::look(const std::vector<Way>& ways, std::size_t most) {
  Look look;
  for (std::size_t i = 0; i < std::min(most, ways.size()); ++i) {
    Json parameters = ways[i].find;
    parameters["limit"] = kEnough;
    const Json answer = client_.call("element.find", std::move(parameters));
    const auto elements = answer.value("elements", Json::array());
    look.matches.push_back(elements.size());
    if (elements.size() != 1) continue;
    look.found = FoundElement{elements.front(), ways[i].locator, i == 0};
    break;
  }
  return look;
}

void ElementFinder::awaitOnly(const Json& locator, Deadline deadline) {
  client_.comesTrue({{"find", locator}, {"count", 1}}, timeUntil(deadline));
}

void ElementFinder::explain(const Json& element, const std::vector<Way>& ways, const Look& look) {
  std::string why = "not found";
  for (std::size_t i = 0; i < look.matches.size(); ++i) {
    const auto count = look.matches[i];
    const auto fits = count == 0         ? std::string("fits nothing")
                      : count == kEnough ? "fits " + std::to_string(count) + " or more"
                                         : "fits " + std::to_string(count);
    why += (i == 0 ? ": " : ", ") + locatorInWords(ways[i].find) + " " + fits;
  }
  const Json tree = client_.call("tree.get");
  const auto elements = tree.value("elements", std::vector<Json>());
  throw StepFailure(why, candidatesFor(element, elements));
}

}  // namespace tarni::host
