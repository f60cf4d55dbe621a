// Terminal: how text is put for a person: colours and progress only where a terminal shows them.
// Main thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarni::host::Terminal {

// Marked up when standard output (for `error`, standard error) is a terminal and NO_COLOR is unset.
std::string strong(const std::string& text);
std::string faint(const std::string& text);
std::string error(const std::string& text);

// In double quotes, on one line, control characters escaped.
std::string quoted(std::string_view text);

// A command's words with blanks between them.
std::string joined(const std::vector<std::string>& words);

// At most `columns` characters, with "…" for what is left out.
std::string clipped(const std::string& text, std::size_t columns);

// Shows on a terminal's standard error how much of a long answer has come; the line is wiped when
// all has.
void showProgress(std::size_t received, std::size_t total);

using Row = std::vector<std::string>;
// Prints the rows in aligned columns; the first row is the heading.
void printTable(const std::vector<Row>& rows);

}  // namespace tarni::host::Terminal
