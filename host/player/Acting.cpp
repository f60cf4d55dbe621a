#include "host/player/Acting.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/player/Pictures.h"
#include "host/wire/WireError.h"

namespace tarni::host {

using std::chrono::milliseconds;

namespace {

// That what an act brings about may take.
constexpr milliseconds kTimeForOutcome{2'000};
constexpr milliseconds kShortest{100};
constexpr milliseconds kQuiet{50};
// That what is hidden is waited for before the element is looked for anew.
constexpr milliseconds kUntilSight{500};

// A place stays as far from the nearer edge as it was.
double placeIn(double at, double lengthThen, double lengthNow) {
  if (lengthThen <= 0 || lengthNow <= 0) return at;
  const double kept = at <= lengthThen / 2 ? at : lengthNow - (lengthThen - at);
  return std::clamp(kept, 0.0, lengthNow - std::min(1.0, lengthNow / 2));
}

double lengthOf(const Json& description, const char* side) {
  return numberIn(objectIn(description, "rect"), side);
}

}  // namespace

FoundElement Acting::element() {
  return onceEnabled(elementInSight());
}

FoundElement Acting::onceEnabled(FoundElement found) {
  // What was pressed although it was disabled is pressed again, and nothing comes of it.
  const bool wasEnabled = step_.element().value("enabled", true);
  if (!wasEnabled || found.description.value("enabled", true)) return found;
  const Json enabled = {{"element", found.handle()}, {"is", "enabled"}};
  const auto begin = Clock::now();
  if (!comesTrueInTime(enabled)) throw StepFailure("found, but it is disabled");
  noteWait(begin, "until it was enabled");
  return found;
}

// Another may have its name, and be hidden, while that which is meant is not there yet.
FoundElement Acting::elementInSight() {
  const bool wasVisible = step_.element().value("visible", true);
  const auto begin = Clock::now();
  bool isHidden = false;
  while (true) {
    auto found = elementAsItIs();
    // Whether an element of a page is scrolled out of it the page knows.
    if (found.isInPage() || !found.description.value("visible", true)) {
      client_.call("element.scrollIntoView", {{"element", found.handle()}});
      found.description = describedNow(found.handle()).value_or(found.description);
    }
    if (!wasVisible || found.description.value("visible", true)) {
      if (isHidden) noteWait(begin, "until it was to be seen");
      return found;
    }
    isHidden = true;
    if (Clock::now() >= deadline_) throw StepFailure("found, but nothing of it is to be seen");
    client_.comesTrue({{"element", found.handle()}, {"is", "visible"}},
                      std::min(kUntilSight, timeLeft()));
    startAgain();
  }
}

FoundElement Acting::elementAsItIs() {
  auto found = other("/element");
  played_.element = found.description;
  played_.locator = found.locator;
  return found;
}

FoundElement Acting::other(const std::string& there) {
  return other(there, deadline_);
}

FoundElement Acting::other(const std::string& there, Deadline deadline) {
  auto found =
      finder_.await(step_.json().value(Json::json_pointer(there), Json::object()), deadline);
  if (played_.element.empty()) played_.element = found.description;
  if (!found.waitedFor.empty()) note("waited " + found.waitedFor);
  if (!found.isFirstWay) proposeWays(found, there);
  return found;
}

std::optional<FoundElement> Acting::otherSoon(const std::string& there) {
  const Deadline soon = std::min(deadline_, Clock::now() + kTimeForOutcome);
  try {
    return other(there, soon);
  } catch (const StepFailure&) {
    if (Clock::now() >= deadline_) throw;
    return std::nullopt;
  }
}

std::optional<FoundElement> Acting::elementIfAny() {
  if (!isToBeTold(step_.element())) return std::nullopt;
  return onceEnabled(elementAsItIs());
}

// What the first way has become is known only now.
void Acting::proposeWays(const FoundElement& found, const std::string& there) {
  const auto ways = locatorsIn(step_.json().at(Json::json_pointer(there)));
  auto text = "found by " + locatorInWords(ways[found.locator]) + ", as " +
              locatorInWords(ways.front()) + " does not fit it alone any more";
  if (found.locator == 0) {
    Json anywhere = ways.front();
    anywhere.erase("windowTitle");
    text = "found by " + locatorInWords(anywhere) + " in a window of another title";
  }
  note(text);
  try {
    const Json now = client_.call("element.locators", {{"element", found.handle()}});
    const auto better = locatorsIn(now);
    if (better.empty()) return;
    propose(there + "/locators", now["locators"], locatorInWords(better.front()));
  } catch (const RequestError&) {
    // It is gone.
  }
}

void Acting::propose(const std::string& there, Json value, const std::string& inWords) {
  if (played_.proposal.is_null()) played_.proposal = step_.json();
  played_.proposal[Json::json_pointer(there)] = std::move(value);
  addWord(played_.better, inWords);
  note("better now: " + inWords);
}

Json Acting::act(const std::string& method, Json parameters) {
  if (beforeActing_) std::exchange(beforeActing_, nullptr)();
  Json answer = asked(method, std::move(parameters));
  played_.costs.add(answer);
  return answer;
}

// What is refused is not done; what ends the connection may be.
Json Acting::asked(const std::string& method, Json parameters) {
  try {
    Json answer = client_.call(method, std::move(parameters), timeLeft());
    hasActed_ = true;
    return answer;
  } catch (const WireError&) {
    hasActed_ = true;
    throw;
  }
}

bool Acting::actOnceTaken(const std::string& method, const Json& parameters) {
  const Deadline end = std::min(deadline_, Clock::now() + kTimeForOutcome);
  while (true) {
    try {
      act(method, parameters);
      return true;
    } catch (const RequestError& error) {
      if (error.name() != "invalid argument") throw;
      if (Clock::now() >= end) return false;
    }
    awaitChange();
  }
}

bool Acting::comesTrue(const Json& condition) {
  return client_.comesTrue(condition, std::min(kTimeForOutcome, timeLeft()));
}

bool Acting::comesTrueInTime(const Json& condition) {
  return client_.comesTrue(condition, timeLeft());
}

std::optional<Json> Acting::describedNow(long element) {
  try {
    return client_.call("element.describe", {{"element", element}})
        .value("description", Json::object());
  } catch (const RequestError&) {
    return std::nullopt;
  }
}

std::string Acting::textToType() const {
  const auto secret = step_.secret();
  return secret.empty() ? textIn(step_.json(), "text") : secrets_.valueOf(secret);
}

Json Acting::target(const FoundElement& found, const Json& recorded, const Json& at) {
  Json target = {{"element", found.handle()}};
  if (at.empty()) return target;
  const auto along = [&](const char* axis, const char* side) {
    target[axis] =
        placeIn(numberIn(at, axis), lengthOf(recorded, side), lengthOf(found.description, side));
  };
  along("x", "width");
  along("y", "height");
  return target;
}

void Acting::awaitChange() {
  if (!comesToRest(client_)) std::this_thread::sleep_for(kQuiet);
}

void Acting::startAgain() {
  played_.message.clear();
  played_.better.clear();
  played_.proposal = nullptr;
  played_.element = Json::object();
}

void Acting::note(const std::string& text) {
  addWord(played_.message, text, "; ");
}

void Acting::noteWait(Deadline begin, const std::string& until) {
  const std::chrono::duration<double> took = Clock::now() - begin;
  if (took >= kWorthSaying) note("waited " + inSeconds(took.count()) + " " + until);
}

milliseconds Acting::timeLeft() const {
  return std::max(kShortest, std::chrono::ceil<milliseconds>(deadline_ - Clock::now()));
}

}  // namespace tarni::host
