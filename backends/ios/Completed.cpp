#include "backends/ios/Completed.h"

namespace tarni::ios {
namespace {

template <typename Result>
platform::Task<Result> run(std::function<Result()> work) {
  co_return work();
}

}  // namespace

platform::Task<void> completed(std::function<void()> work) {
  work();
  co_return;
}

platform::Task<std::string> completed(std::function<std::string()> work) {
  return run(std::move(work));
}

platform::Task<std::optional<std::string>> completed(
    std::function<std::optional<std::string>()> work) {
  return run(std::move(work));
}

platform::Task<platform::UIImageRef> completed(std::function<platform::UIImageRef()> work) {
  return run(std::move(work));
}

platform::Task<platform::CFRunLoopRunResult> completed(
    std::function<platform::CFRunLoopRunResult()> work) {
  return run(std::move(work));
}

}  // namespace tarni::ios
