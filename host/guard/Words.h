// The words of a line that starts a program, and lists of words. Plain values, any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarni::host {

// The words of a line as a shell takes them, quotes and ~ included; commands in it are refused.
// Throws std::invalid_argument.
std::vector<std::string> wordsOf(const std::string& line);

// The words with blanks between them, for a person.
std::string joined(const std::vector<std::string>& words);
// Puts a word behind those of a list, `between` before it unless it is the first.
void addWord(std::string& list, std::string_view word, std::string_view between = ", ");

// "keepassxc" of "/usr/bin/keepassxc --debug"; "" of nothing.
std::string programName(const std::vector<std::string>& startLine);

}  // namespace tarni::host
