#include "host/http/Routes.h"

#include <algorithm>
#include <optional>

namespace tarni::host::http {

namespace {

std::vector<std::string> partsOf(std::string_view path) {
  std::vector<std::string> parts;
  while (!path.empty()) {
    path.remove_prefix(1);  // the slash
    const auto end = std::min(path.find('/'), path.size());
    parts.emplace_back(path.substr(0, end));
    path.remove_prefix(end);
  }
  return parts;
}

bool isVariable(const std::string& part) {
  return part.starts_with('{');
}

// What the variables stand for; null when the path is another one.
std::optional<std::vector<std::string>> variablesIn(const std::vector<std::string>& pattern,
                                                    const std::vector<std::string>& path) {
  if (pattern.size() != path.size()) return std::nullopt;
  std::vector<std::string> variables;
  for (std::size_t part = 0; part < pattern.size(); ++part) {
    if (isVariable(pattern[part])) {
      variables.push_back(path[part]);
    } else if (pattern[part] != path[part]) {
      return std::nullopt;
    }
  }
  return variables;
}

}  // namespace

Routes::Routes(std::vector<Route> routes) {
  for (auto& route : routes) {
    rows_.push_back({std::move(route.method), partsOf(route.path), std::move(route.handler)});
  }
  std::ranges::stable_sort(
      rows_, {}, [](const Row& row) { return std::ranges::count_if(row.parts, isVariable); });
}

Routes::Match Routes::match(std::string_view method, std::string_view path) const {
  const auto parts = partsOf(path);
  Match match;
  for (const auto& row : rows_) {
    auto variables = variablesIn(row.parts, parts);
    if (!variables) continue;
    if (row.method == method) return {Fit::Found, &row.handler, *std::move(variables)};
    match.fit = Fit::NoSuchMethod;
  }
  return match;
}

}  // namespace tarni::host::http
