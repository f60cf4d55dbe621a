#include "backends/ios/Completed.h"

#include <utility>

namespace tarni::ios {
namespace {

template <typename Result>
platform::Task<Result> coroutine(std::function<Result()> work) {
  co_return work();
}

}  // namespace

platform::Task<void> detail::run(std::function<void()> work) {
  work();
  co_return;
}

platform::Task<std::string> detail::run(std::function<std::string()> work) {
  return coroutine(std::move(work));
}

platform::Task<std::optional<std::string>> detail::run(
    std::function<std::optional<std::string>()> work) {
  return coroutine(std::move(work));
}

platform::Task<platform::UIImageRef> detail::run(std::function<platform::UIImageRef()> work) {
  return coroutine(std::move(work));
}

platform::Task<platform::CFRunLoopRunResult> detail::run(
    std::function<platform::CFRunLoopRunResult()> work) {
  return coroutine(std::move(work));
}

}  // namespace tarni::ios
