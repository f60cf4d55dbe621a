#include "tests/host/Tarni.h"

#include <utility>

namespace tarni::test {

Result tarni(std::vector<std::string> arguments, const Program::Environment& environment) {
  arguments.insert(arguments.begin(), built("bin/tarni"));
  Program program(std::move(arguments), environment);
  const int code = program.wait(kPatience);
  return {code, program.output()};
}

}  // namespace tarni::test
