#include "host/guard/Words.h"

#include <wordexp.h>

#include <filesystem>
#include <stdexcept>

namespace tarni::host {

std::vector<std::string> wordsOf(const std::string& line) {
  wordexp_t expanded{};
  const int failure = wordexp(line.c_str(), &expanded, WRDE_NOCMD | WRDE_UNDEF);
  std::vector<std::string> words;
  if (failure == 0) words.assign(expanded.we_wordv, expanded.we_wordv + expanded.we_wordc);
  if (failure == 0 || failure == WRDE_NOSPACE) wordfree(&expanded);
  if (words.empty()) throw std::invalid_argument("\"" + line + "\" is no start-up line");
  return words;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const auto& word : words) addWord(text, word, " ");
  return text;
}

void addWord(std::string& list, std::string_view word, std::string_view between) {
  if (!list.empty()) list += between;
  list += word;
}

std::string programName(const std::vector<std::string>& startLine) {
  return startLine.empty() ? "" : std::filesystem::path(startLine.front()).filename().string();
}

}  // namespace tarni::host
