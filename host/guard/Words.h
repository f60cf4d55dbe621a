// The words of a line that starts a program. Plain values, any thread.
#pragma once

#include <string>
#include <vector>

namespace tarni::host {

// The words of a line as a shell takes them, quotes and ~ included; commands in it are refused.
// Throws std::invalid_argument.
std::vector<std::string> wordsOf(const std::string& line);

// The words with blanks between them, for a person.
std::string joined(const std::vector<std::string>& words);

// "keepassxc" of "/usr/bin/keepassxc --debug"; "" of nothing.
std::string programName(const std::vector<std::string>& startLine);

}  // namespace tarni::host
