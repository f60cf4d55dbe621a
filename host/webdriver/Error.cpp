#include "host/webdriver/Error.h"

#include <algorithm>
#include <string_view>

namespace tarni::host::webdriver {

namespace {

struct KnownError {
  std::string_view name;
  int status;
};

constexpr KnownError kErrors[] = {
    {"element click intercepted", 400},
    {"element not interactable", 400},
    {"invalid argument", 400},
    {"invalid element state", 400},
    {"invalid selector", 400},
    {"invalid session id", 404},
    {"javascript error", 500},
    {"move target out of bounds", 500},
    {"no such alert", 404},
    {"no such cookie", 404},
    {"no such element", 404},
    {"no such frame", 404},
    {"no such window", 404},
    {"script timeout", 500},
    {"session not created", 500},
    {"stale element reference", 404},
    {"timeout", 500},
    {"unable to capture screen", 500},
    {"unable to set cookie", 500},
    {"unexpected alert open", 500},
    {"unknown command", 404},
    {"unknown method", 405},
    {"unsupported operation", 500},
    {"unknown error", 500},
};

const KnownError& rowOf(const std::string& name) {
  const auto* const found = std::ranges::find(kErrors, name, &KnownError::name);
  return found != std::end(kErrors) ? *found : *std::prev(std::end(kErrors));
}

}  // namespace

Error::Error(const std::string& name, const std::string& sentence)
    : std::runtime_error(sentence), name_(rowOf(name).name), status_(rowOf(name).status) {}

}  // namespace tarni::host::webdriver
