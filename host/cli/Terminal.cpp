#include "host/cli/Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>

namespace tarni::host::Terminal {

namespace {

constexpr std::size_t kWorthShowing = std::size_t{512} * 1024;

bool hasColours(int descriptor) {
  return isatty(descriptor) == 1 && std::getenv("NO_COLOR") == nullptr;
}

std::string marked(const std::string& text, const char* code, int descriptor) {
  return hasColours(descriptor) ? "\033[" + std::string(code) + "m" + text + "\033[0m" : text;
}

bool beginsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t length(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

}  // namespace

std::string strong(const std::string& text) {
  return marked(text, "1", STDOUT_FILENO);
}
std::string faint(const std::string& text) {
  return marked(text, "2", STDOUT_FILENO);
}
std::string error(const std::string& text) {
  return marked(text, "31", STDERR_FILENO);
}

std::string quoted(std::string_view text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const auto& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
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

void printTable(const std::vector<Row>& rows) {
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
    std::cout << (&row == &rows.front() ? strong(line) : line) << '\n';
  }
}

}  // namespace tarni::host::Terminal
