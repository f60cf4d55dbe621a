// The lines of a fuzzer's input, without their ends.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tarni::test {

inline std::vector<std::string> linesOf(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> lines;
  for (const auto *at = data, *const end = data + size;; ++at) {
    const auto* const begin = std::exchange(at, std::find(at, end, '\n'));
    lines.emplace_back(begin, at);
    if (at == end) return lines;
  }
}

}  // namespace tarni::test
