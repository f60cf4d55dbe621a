#include "tests/ios/Await.h"

#include <exception>
#include <utility>

#include "tests/support/Complete.h"

namespace tarni::test {

void await(platform::Task<void> task) {
  complete(std::move(task));
}

std::optional<std::string> await(platform::Task<std::optional<std::string>> task) {
  return complete(std::move(task));
}

platform::UIImageRef awaitImage(platform::Task<platform::UIImageRef> task) {
  return complete(std::move(task));
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
