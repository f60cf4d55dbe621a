// Terminal: how text is put for a person: colours and progress only where a terminal shows them.
// Main thread.
#pragma once

#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

namespace tarni::host::Terminal {

// Text with a style, to be put to std::cout or std::cerr: shown on terminals only.
struct Styled {
  std::string text;
  const char* style;  // an escape sequence
};
Styled strong(std::string text);
Styled faint(std::string text);
Styled error(std::string text);
std::ostream& operator<<(std::ostream& out, const Styled& styled);

// How much of a text a row of a table shows.
inline constexpr std::size_t kTextColumns = 40;

// At most `columns` characters, with "…" for what is left out.
std::string clipped(const std::string& text, std::size_t columns);

// Shows on a terminal's standard error how much of a long answer has come; the line is wiped when
// all has.
void showProgress(std::size_t received, std::size_t total);

using Row = std::vector<std::string>;
// Prints the rows in aligned columns, each on one line; the first row is the heading.
void printTable(std::vector<Row> rows, std::ostream& out = std::cout);

}  // namespace tarni::host::Terminal
