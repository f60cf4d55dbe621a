// Texts in lower case, as the platform's strings know it. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace tarni::platform {

// Lower case of every letter that has one, not only of ASCII.
std::string lowercaseString(std::string_view text);
// Letters of ASCII only: for what the agent itself has named.
std::string lowercase(std::string_view text);

}  // namespace tarni::platform
