// Objects that threads may still use when a test has ended.
#pragma once

#include <utility>
#include <vector>

namespace tarni::test {

// A new object that is never destroyed, yet stays within reach of a leak checker.
template <typename Object, typename... Arguments>
Object& immortal(Arguments&&... arguments) {
  static auto* const all = new std::vector<Object*>;
  all->push_back(new Object(std::forward<Arguments>(arguments)...));
  return *all->back();
}

}  // namespace tarni::test
