#include "backends/qt/program/Stillness.h"

#include <map>

#include "backends/qt/program/QtProgram.h"

namespace tarni::qt {
namespace {

using Things = std::map<const void*, std::any>;

// Null while nobody holds still.
std::weak_ptr<Things>& things() {
  static auto* const shared = new std::weak_ptr<Things>;
  return *shared;
}

}  // namespace

std::shared_ptr<void> stillness() {
  std::shared_ptr<Things> held = things().lock();
  if (!held) {
    held = std::make_shared<Things>();
    things() = held;
  }
  return held;
}

std::any* keptWhileStill(const void* key) {
  const std::shared_ptr<Things> held = things().lock();
  if (!held) return nullptr;
  if (held->empty()) {
    postToProgram([kept = std::weak_ptr(held)] {
      if (const auto still = kept.lock()) still->clear();
    });
  }
  return &(*held)[key];
}

}  // namespace tarni::qt
