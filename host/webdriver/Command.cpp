#include "host/webdriver/Command.h"

#include <nlohmann/json.hpp>

#include "host/webdriver/Error.h"

namespace tarni::host::webdriver {

std::string Arguments::text(const char* name) const {
  const auto found = body.find(name);
  if (found != body.end() && found->is_string()) return found->get<std::string>();
  throw Error("invalid argument", "\"" + std::string(name) + "\" is needed, a text");
}

double Arguments::number(const char* name) const {
  const auto found = body.find(name);
  if (found != body.end() && found->is_number()) return found->get<double>();
  throw Error("invalid argument", "\"" + std::string(name) + "\" is needed, a number");
}

}  // namespace tarni::host::webdriver
