#include "platform/Platform.h"

namespace tarni::platform {
namespace {

Platform& installed() {
  static auto* const platform = new Platform;
  return *platform;
}

}  // namespace

void install(const Platform& platform) {
  installed() = platform;
}

const Platform& current() {
  return installed();
}

}  // namespace tarni::platform
