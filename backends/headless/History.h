// remember(): keeps the latest of what was asked of the platform, so that a program that runs for
// days does not fill its memory.
#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
#include <utility>

namespace tarni::headless {

// How many entries each history keeps. Set at start-up, by a program in which nobody reads them.
inline std::atomic<std::size_t> historyCapacity = 10000;

template <typename Entry>
Entry& remember(std::deque<Entry>& history, Entry entry) {
  if (history.size() >= historyCapacity) history.pop_front();
  return history.emplace_back(std::move(entry));
}

}  // namespace tarni::headless
