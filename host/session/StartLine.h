// How a running program was started, from the kernel's files about it. Linux only, any thread.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarni::host {

// The words of its start-up line, the first made absolute when it was a relative path. Empty when
// the kernel does not tell.
std::vector<std::string> startLineOf(pid_t pid);

// The process of this user that has `port` open in this process's network. Null when there is none
// or it is hidden from this user.
std::optional<pid_t> processServing(std::uint16_t port);

// The words of a line as a shell takes them, quotes and ~ included; commands in it are refused.
// Throws std::invalid_argument.
std::vector<std::string> wordsOf(const std::string& line);

// The words with blanks between them, for a person.
std::string joined(const std::vector<std::string>& words);

// "keepassxc" of "/usr/bin/keepassxc --debug"; "" of nothing.
std::string programName(const std::vector<std::string>& startLine);

}  // namespace tarni::host
