#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "agent/session/Conditions.h"
#include "agent/session/Handlers.h"
#include "agent/session/Waits.h"

namespace tarni::session::wait {
namespace {

using Conditions = std::vector<Condition>;

double millisecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

bool allHold(const Conditions& conditions) {
  return std::ranges::all_of(conditions, &Condition::holds);
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
  const auto conditions = std::make_shared<const Conditions>(given.begin(), given.end());
  const double timeout = *call->timeout();
  // Named before it is awaited: g++ 12 destroys the captures of an unnamed one twice.
  std::function<bool()> hold = [conditions] { return allHold(*conditions); };
  const bool isMet = co_await Waits::sharedInstance().until(call, std::move(hold), timeout);
  if (!isMet) {
    throw SessionError(errors::kTimeout,
                       "not all of it came to be in time; \"conditions\" says "
                       "what is there instead",
                       {{"conditions", insteadOf(*conditions)}});
  }
  co_return Result(Json{{"waitedMs", millisecondsSince(begin)}});
}

Answer rest(CallRef call) {
  const Clock::time_point begin = Clock::now();
  const double quiet = call->parameters().value("quiet", 100.0);
  if (quiet <= 0) throw SessionError(errors::kInvalidArgument, "\"quiet\" is more than 0");
  MainWatch& watch = MainWatch::sharedInstance();
  if (!watch.observes()) {
    throw SessionError(errors::kUnsupported, "this platform does not tell when it is at rest");
  }
  const double timeout = *call->timeout();
  const bool isMet = co_await Waits::sharedInstance().untilRest(call, quiet / 1000, timeout);
  if (!isMet) {
    throw SessionError(errors::kTimeout,
                       "the program does not come to rest; last it handled: " +
                           (watch.lastWork().empty() ? "what it does not tell" : watch.lastWork()));
  }
  co_return Result(Json{{"waitedMs", millisecondsSince(begin)}});
}

}  // namespace tarni::session::wait
