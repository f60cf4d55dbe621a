// privately(): sends a message that no SDK declares, if the receiver knows it. Main thread.
#pragma once

#include <string>

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Guard.h"
#include "backends/ios/guard/Report.h"

namespace tarni::ios {

// False after a log line that says which selector is missing and what no longer works for it.
// Nil knows every selector.
bool knows(id receiver, SEL selector, const char* whatNoLongerWorks);

// Throws what `call` raises as platform::NSException.
template <typename Call>
void privately(id receiver, SEL selector, const char* whatNoLongerWorks, Call call) {
  if (knows(receiver, selector, whatNoLongerWorks)) guarded(call);
}

}  // namespace tarni::ios
