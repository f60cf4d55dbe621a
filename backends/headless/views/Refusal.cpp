#include "backends/headless/views/Refusal.h"

#include "platform/Foundation/NSException.h"

namespace tarni::headless {

void refuseValue(const std::string& value, const std::string& choices) {
  throw platform::NSException(platform::NSInvalidArgumentException,
                              "\"" + value + "\" cannot be chosen here, but " + choices);
}

void refuseValue(const std::string& value, const std::vector<std::string>& choices) {
  std::string all;
  for (const std::string& choice : choices) all += (all.empty() ? "\"" : ", \"") + choice + "\"";
  refuseValue(value, all.empty() ? "nothing can" : all);
}

}  // namespace tarni::headless
