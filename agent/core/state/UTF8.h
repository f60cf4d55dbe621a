#pragma once

#include <string>

namespace tarni {

// True when the bytes are well-formed UTF-8. Any thread.
bool isUTF8(const std::string& bytes);

}  // namespace tarni
