#include "backends/ios/controls/Named.h"

#include <string_view>

#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/RuntimeClass.h"

namespace tarni::ios {

Named namedAs(::UIView* view) {
  struct Name {
    std::string_view part;  // of the lower-cased name
    const char* answers;
    Named named;
  };
  constexpr Name kNames[] = {
      {"switch", "isOn", Named::Switch},
      {"segmentedcontrol", "selectedSegmentIndex", Named::SegmentedControl},
      {"scrollview", "setContentOffset:animated:", Named::ScrollView},
  };
  const std::string& className = classOf(view)->lowercaseName();
  for (const Name& name : kNames) {
    if (className.find(name.part) == std::string::npos) continue;
    if (answered(view, "respondsToSelector:", [&]() -> bool {
          return [view respondsToSelector:sel_registerName(name.answers)];
        })) {
      return name.named;
    }
  }
  return Named::AsItsKind;
}

}  // namespace tarni::ios
