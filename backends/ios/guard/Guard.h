// Guards round messages to the application's objects, any of which may raise: its classes override
// what they like. Any thread.
//
// `guarded` is for what the agent does: what is raised goes on as platform::NSException, which a
// command answers with its reason. `answered` is for what the agent asks: an answer that raised, or
// threw what is C++'s, is the given one, and the log says so once, so that one bad view does not
// hide all others.
//
// Calls hold messages only.
#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include "backends/ios/Apple.h"
#include "backends/ios/guard/GuardedCall.h"
#include "backends/ios/guard/Thrown.h"
#include "platform/Foundation/NSException.h"

namespace tarni::ios {

namespace detail {

// Writes "-[MyView hidden] raised …" once for each class and question.
void reportRaised(id object, const char* question, const TarniRaised& raised) noexcept;
// The same for what it threw.
void reportThrown(id object, const char* question, const std::exception_ptr& thrown) noexcept;

template <typename Call>
bool invoke(Call& call, TarniRaised& raised) {
  return tarni_guardedCall([](void* context) { (*static_cast<Call*>(context))(); }, &call, &raised);
}

// False after a report.
template <typename Call>
bool comesBack(id object, const char* question, Call& call) noexcept {
  TarniRaised raised;
  bool cameBack = false;
  if (const std::exception_ptr thrown = thrownBy([&] { cameBack = invoke(call, raised); })) {
    reportThrown(object, question, thrown);
  } else if (!cameBack) {
    reportRaised(object, question, raised);
  }
  return cameBack;
}

}  // namespace detail

template <typename Call>
auto guarded(Call call) {
  using Result = std::invoke_result_t<Call>;
  TarniRaised raised;
  if constexpr (std::is_void_v<Result>) {
    if (!detail::invoke(call, raised)) throw platform::NSException(raised.name, raised.reason);
  } else {
    Result result{};
    auto keep = [&] { result = call(); };
    if (!detail::invoke(keep, raised)) throw platform::NSException(raised.name, raised.reason);
    return result;
  }
}

// `object` is who is asked and `question` the selector, for the log.
template <typename Call, typename Result = std::invoke_result_t<Call>>
Result answered(id object, const char* question, Call call,
                std::type_identity_t<Result> otherwise = Result{}) noexcept {
  Result result{};
  auto keep = [&] { result = call(); };
  return detail::comesBack(object, question, keep) ? result : otherwise;
}

// The same for a call without an answer: false when it did not come back.
template <typename Call>
requires std::is_void_v<std::invoke_result_t<Call>>
bool answered(id object, const char* question, Call call) noexcept {
  return detail::comesBack(object, question, call);
}

}  // namespace tarni::ios
