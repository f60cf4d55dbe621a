#include "platform/Dispatch/Dispatch.h"

namespace tarni::platform {
namespace {

// A named coroutine, because a coroutine lambda would outlive its own captures.
Task<void> asTask(Block block) {
  block();
  co_return;
}

}  // namespace

void MainQueue::async(Block block) {
  asyncTask([block = std::move(block)] { return asTask(block); });
}

bool MainQueue::sync(Block block) {
  return syncTask([block = std::move(block)] { return asTask(block); });
}

}  // namespace tarni::platform
