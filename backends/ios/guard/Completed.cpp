#include "backends/ios/guard/Completed.h"

#include <utility>

namespace tarni::ios {

template <typename Result>
platform::Task<Result> detail::run(std::function<Result()> work) {
  co_return work();
}

template <>
platform::Task<void> detail::run(std::function<void()> work) {
  work();
  co_return;
}

template platform::Task<std::string> detail::run(std::function<std::string()> work);
template platform::Task<std::optional<std::string>> detail::run(
    std::function<std::optional<std::string>()> work);
template platform::Task<platform::UIImageRef> detail::run(
    std::function<platform::UIImageRef()> work);
template platform::Task<platform::CFRunLoopRunResult> detail::run(
    std::function<platform::CFRunLoopRunResult()> work);

}  // namespace tarni::ios
