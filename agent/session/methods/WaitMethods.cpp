#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "agent/session/calls/Waits.h"
#include "agent/session/methods/Handlers.h"
#include "agent/session/screen/Conditions.h"

namespace tarni::session::wait {
namespace {

using Conditions = std::vector<Condition>;

double millisecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

// Nothing tells that a page has changed.
constexpr double kBetweenPages = 100;  // milliseconds

bool allHold(const Conditions& conditions) {
  return std::ranges::all_of(conditions, &Condition::holds);
}

// True when any of them is about pages.
platform::Task<bool> askPages(Conditions& conditions) {
  bool haveAny = false;
  for (Condition& condition : conditions) {
    const bool has = co_await condition.askPages();
    haveAny = haveAny || has;
  }
  co_return haveAny;
}

// In a turn of the call's, and in another one when there are pages.
platform::Task<bool> untilAllHold(CallRef call, std::shared_ptr<Conditions> conditions) {
  const Clock::time_point begin = Clock::now();
  for (;;) {
    const bool hasPages = co_await askPages(*conditions);
    const double left = *call->timeout() - millisecondsSince(begin);
    const double slice = hasPages ? std::min(left, kBetweenPages) : left;
    // Named, since compilers destroy what an awaited call is given unnamed once more than they make
    // it.
    std::function<bool()> look = [conditions, hasPages] {
      return allHold(*conditions) ||
             (!hasPages && std::ranges::any_of(*conditions, &Condition::hasMetPages));
    };
    const bool isWoken = co_await Waits::sharedInstance().until(call, std::move(look), slice);
    if (isWoken && allHold(*conditions)) co_return true;
    if (!isWoken && slice == left) co_return false;
    co_await call->pause(1);
  }
}

Json insteadOf(const Conditions& conditions) {
  Json told = Json::array();
  for (const Condition& condition : conditions) told.push_back(condition.instead());
  return told;
}

}  // namespace

Answer forConditions(CallRef call) {
  const Clock::time_point begin = Clock::now();
  const Json& given = call->parameters()["conditions"];
  if (given.empty() || given.size() > 100) {
    throw SessionError(errors::kInvalidArgument, "\"conditions\" are 1 to 100");
  }
  const auto conditions = std::make_shared<Conditions>(given.begin(), given.end());
  const bool isMet = co_await untilAllHold(call, conditions);
  if (!isMet) {
    throw SessionError(errors::kTimeout, "not all of it came to be in time",
                       {{"conditions", insteadOf(*conditions)}});
  }
  co_return Result(Json{{"waitedMs", millisecondsSince(begin)}});
}

Answer rest(CallRef call) {
  const Clock::time_point begin = Clock::now();
  const double quiet = call->parameters().value("quiet", 100.0);
  if (quiet <= 0) throw SessionError(errors::kInvalidArgument, "\"quiet\" is more than 0");
  const MainWatch& watch = MainWatch::sharedInstance();
  const double timeout = *call->timeout();
  const bool isMet = co_await Waits::sharedInstance().untilRest(call, quiet, timeout);
  if (!isMet) {
    throw SessionError(errors::kTimeout,
                       "the program does not come to rest; last it handled: " +
                           (watch.lastWork().empty() ? "what it does not tell" : watch.lastWork()));
  }
  co_return Result(Json{{"waitedMs", millisecondsSince(begin)}});
}

}  // namespace tarni::session::wait
