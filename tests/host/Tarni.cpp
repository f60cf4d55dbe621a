#include "tests/host/Tarni.h"

#include <chrono>
#include <utility>

namespace tarni::test {

Result tarni(std::vector<std::string> arguments, const Program::Environment& environment) {
  arguments.insert(arguments.begin(), built("bin/tarni"));
  Program program(std::move(arguments), environment);
  const int code = program.wait(std::chrono::seconds(30));
  return {code, program.output()};
}

}  // namespace tarni::test
