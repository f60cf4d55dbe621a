// Runs the built `tarni`.
#pragma once

#include <string>
#include <vector>

#include "tests/support/Program.h"

namespace tarni::test {

struct Result {
  int code;
  std::string output;  // of standard output and standard error
};

Result tarni(std::vector<std::string> arguments, const Program::Environment& environment = {});

}  // namespace tarni::test
