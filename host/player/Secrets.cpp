#include "host/player/Secrets.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>

namespace tarni::host {

void Secrets::add(const std::string& assignment) {
  const auto sign = assignment.find('=');
  if (sign == 0 || sign == std::string::npos) {
    throw std::invalid_argument("a secret is given as NAME=VALUE");
  }
  values_[assignment.substr(0, sign)] = assignment.substr(sign + 1);
}

std::vector<std::string> Secrets::complete(const std::vector<std::string>& names) {
  std::vector<std::string> missing;
  for (const auto& name : names) {
    if (values_.contains(name)) continue;
    if (const char* const value = std::getenv(variableOf(name).c_str())) {
      values_[name] = value;
    } else {
      missing.push_back(name);
    }
  }
  return missing;
}

std::string Secrets::variableOf(const std::string& name) {
  std::string variable = "TARNI_SECRET_";
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = byte < 0x80U && std::isalnum(byte) != 0;
    variable += isPlain ? static_cast<char>(std::toupper(byte)) : '_';
  }
  return variable;
}

const std::string& Secrets::valueOf(const std::string& name) const {
  const auto found = values_.find(name);
  if (found != values_.end()) return found->second;
  throw std::invalid_argument("the secret \"" + name + "\" is not given");
}

std::string Secrets::masked(std::string text) const {
  constexpr std::string_view kMask = "•••";
  for (const auto& [name, value] : values_) {
    if (value.empty()) continue;
    for (auto at = text.find(value); at != std::string::npos;
         at = text.find(value, at + kMask.size())) {
      text.replace(at, value.size(), kMask);
    }
  }
  return text;
}

}  // namespace tarni::host
