// The form of every message that the agent writes: the payload's length in bytes as ten decimal
// digits, zero-padded, and right behind them the payload in UTF-8. There is no terminator.
//
//   0000000002[]
#pragma once

#include <string>
#include <string_view>

namespace tarni {

std::string framed(std::string_view payload);

}  // namespace tarni
