#include "host/cli/Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "host/cli/SafeOutput.h"
#include "host/guard/Printable.h"
#include "host/guard/Text.h"

namespace tarni::host::Terminal {

namespace {

constexpr std::size_t kWorthShowing = std::size_t{512} * 1024;

std::size_t length(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

}  // namespace

Styled strong(std::string text) {
  return {std::move(text), "\033[1m"};
}
Styled faint(std::string text) {
  return {std::move(text), "\033[2m"};
}
Styled error(std::string text) {
  return {std::move(text), "\033[31m"};
}

std::ostream& operator<<(std::ostream& out, const Styled& styled) {
  SafeOutput::setStyle(out, styled.style);
  out << styled.text;
  SafeOutput::setStyle(out, "\033[0m");
  return out;
}

std::string clipped(const std::string& text, std::size_t columns) {
  if (length(text) <= columns) return text;
  std::size_t end = 0;
  for (std::size_t seen = 0; end < text.size(); ++end) {
    if (beginsCharacter(text[end]) && ++seen == columns) break;
  }
  return text.substr(0, end) + "…";
}

void showProgress(std::size_t received, std::size_t total) {
  if (total < kWorthShowing || isatty(STDERR_FILENO) != 1) return;
  constexpr double kMegabyte = 1e6;
  std::fprintf(stderr, "\r%.1f of %.1f MB\033[K", static_cast<double>(received) / kMegabyte,
               static_cast<double>(total) / kMegabyte);
  if (total - received < kWorthShowing) std::fputs("\r\033[K", stderr);
}

void printTable(std::vector<Row> rows, std::ostream& out) {
  for (auto& row : rows) {
    for (auto& cell : row) cell = printable(cell);
  }
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], length(row[i]));
  }
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - length(row[i]) + 2, ' ');
    }
    if (&row == &rows.front()) {
      out << strong(line) << '\n';
    } else {
      out << line << '\n';
    }
  }
}

}  // namespace tarni::host::Terminal
