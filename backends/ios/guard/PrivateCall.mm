#include "backends/ios/guard/PrivateCall.h"

namespace tarni::ios {

bool knows(id receiver, SEL selector, const char* whatNoLongerWorks) {
  if (!receiver || answered(receiver, "respondsToSelector:", [&]() -> bool {
        return [receiver respondsToSelector:selector];
      })) {
    return true;
  }
  reportMissing(std::string("-[") + class_getName(object_getClass(receiver)) + " " +
                    sel_getName(selector) + "]",
                whatNoLongerWorks);
  return false;
}

}  // namespace tarni::ios
