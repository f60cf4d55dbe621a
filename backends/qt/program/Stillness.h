// Stillness: what is kept while the agent asks one view after the other and the program does not
// run in between (UIApplication::holdStill). What costs as much as the window is large is then
// worked out once and not for every view. GUI thread.
#pragma once

#include <any>
#include <memory>

namespace tarni::qt {

// Things are kept as long as somebody holds this.
std::shared_ptr<void> stillness();

// Where the thing of that key is kept, empty at first and again once the program has run. Null when
// nobody holds still. Valid until the program runs.
std::any* keptWhileStill(const void* key);

// The kept thing of that key, made when it is missing. Null when nobody holds still.
template <typename Thing>
Thing* keptWhileStill(const void* key) {
  std::any* const kept = keptWhileStill(key);
  if (!kept) return nullptr;
  if (!kept->has_value()) kept->emplace<Thing>();
  return std::any_cast<Thing>(kept);
}

}  // namespace tarni::qt
