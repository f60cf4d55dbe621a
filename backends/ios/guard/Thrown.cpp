#include "backends/ios/guard/Thrown.h"

namespace tarni::ios {

std::exception_ptr thrownBy(const std::function<void()>& call) noexcept {
  try {
    call();
  } catch (...) {
    return std::current_exception();
  }
  return nullptr;
}

}  // namespace tarni::ios
