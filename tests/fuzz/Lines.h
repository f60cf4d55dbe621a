// The lines of a fuzzer's input, without their ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarni::test {

inline std::vector<std::string> linesOf(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> lines(1);
  for (const std::uint8_t* byte = data; byte != data + size; ++byte) {
    if (*byte == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += static_cast<char>(*byte);
    }
  }
  return lines;
}

}  // namespace tarni::test
