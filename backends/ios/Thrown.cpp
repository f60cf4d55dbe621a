#include "backends/ios/Thrown.h"

namespace tarni::ios {

std::exception_ptr thrownBy(const std::function<void()>& call) noexcept {
  try {
    call();
  } catch (...) {
    return std::current_exception();
  }
  return nullptr;
}

std::string reasonOf(const std::exception_ptr& thrown) {
  try {
    std::rethrow_exception(thrown);
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "what is no std::exception";
  }
}

}  // namespace tarni::ios
