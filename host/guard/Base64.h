// Base64: pictures as the agent writes them, without line breaks. Any thread.
#pragma once

#include <string>

namespace tarni::host {

// The bytes; empty when the text is not base-64.
std::string decodeBase64(const std::string& text);

}  // namespace tarni::host
