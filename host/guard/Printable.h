// Printable: text that came from outside, put so that a terminal shows it and does not obey it.
// What could steer one is escaped the way JSON does it ("\n", "\u001b"): control characters, the
// overrides of the direction in which text runs, the separators of lines. What is not UTF-8 becomes
// U+FFFD. Plain values, any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarni::host {

// On one line.
std::string printable(std::string_view text);
// Over as many lines as it has, and with its tabs.
std::string printableLines(std::string_view text);
// On one line and, where it is JSON, of the same meaning.
std::string printableJson(std::string_view json);

// "text" in double quotes, on one line.
std::string inQuotes(std::string_view text);
// As one word that a shell takes for nothing but that text. What steers a terminal is written as
// bash, zsh and ksh know it: $'\033'.
std::string quotedForShell(std::string_view text);

// "1 step", "2 steps".
std::string counted(std::size_t count, const std::string& noun);

// "0.1 s".
std::string inSeconds(double seconds);

// How much of the text does not end within a character whose rest may follow.
std::size_t wholeCharacters(std::string_view text);

}  // namespace tarni::host
