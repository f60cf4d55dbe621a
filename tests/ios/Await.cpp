#include "tests/ios/Await.h"

#include <exception>
#include <stdexcept>
#include <utility>

namespace tarni::test {
namespace {

template <typename Result>
platform::Task<void> keep(platform::Task<Result> task, Result& result) {
  result = co_await task;
}

}  // namespace

void await(platform::Task<void> task) {
  bool hasEnded = false;
  std::exception_ptr failure;
  platform::spawn(std::move(task), [&](const std::exception_ptr& raised) {
    hasEnded = true;
    failure = raised;
  });
  if (failure) std::rethrow_exception(failure);
  if (!hasEnded) throw std::logic_error("the task was suspended");
}

std::optional<std::string> await(platform::Task<std::optional<std::string>> task) {
  std::optional<std::string> result;
  await(keep(std::move(task), result));
  return result;
}

platform::UIImageRef awaitImage(platform::Task<platform::UIImageRef> task) {
  platform::UIImageRef result;
  await(keep(std::move(task), result));
  return result;
}

std::string failureOf(platform::Task<void> task) {
  return failureOf([&task] { await(std::move(task)); });
}

std::string failureOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    return failure.what();
  }
  return "";
}

}  // namespace tarni::test
