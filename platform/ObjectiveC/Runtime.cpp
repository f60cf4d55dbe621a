#include "platform/ObjectiveC/Runtime.h"

namespace tarni::platform {

NSException unrecognizedSelector(Class cls, std::string_view selector) {
  return {NSInvalidArgumentException, "-[" + (cls ? cls->name() : std::string("nil")) + " " +
                                          std::string(selector) +
                                          "]: unrecognized selector sent to instance"};
}

}  // namespace tarni::platform
