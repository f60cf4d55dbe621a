// Guards round messages to the application's objects, any of which may raise: its classes override
// what they like. Any thread.
//
// `guarded` is for what the agent does: what is raised goes on as platform::NSException, which a
// command answers with its reason. `answered` is for what the agent asks: an answer that raised is
// the given one, and the log says so once, so that one bad view does not hide all others.
//
// Calls hold messages only: what C++ throws inside one would end at the boundary of the languages.
#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include "backends/ios/Apple.h"
#include "backends/ios/GuardedCall.h"
#include "platform/Foundation/NSException.h"

namespace tarni::ios {

namespace detail {

// Writes "-[MyView hidden] raised …" once for each class and question.
void reportRaised(id object, const char* question, const TarniRaised& raised) noexcept;

template <typename Call>
bool invoke(Call& call, TarniRaised& raised) {
  return tarni_guardedCall([](void* context) { (*static_cast<Call*>(context))(); }, &call, &raised);
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
  TarniRaised raised;
  Result result{};
  auto keep = [&] { result = call(); };
  if (detail::invoke(keep, raised)) return result;
  detail::reportRaised(object, question, raised);
  return otherwise;
}

// The same for a call without an answer: false when it raised.
template <typename Call>
requires std::is_void_v<std::invoke_result_t<Call>>
bool answered(id object, const char* question, Call call) noexcept {
  TarniRaised raised;
  const bool cameBack = detail::invoke(call, raised);
  if (!cameBack) detail::reportRaised(object, question, raised);
  return cameBack;
}

}  // namespace tarni::ios
