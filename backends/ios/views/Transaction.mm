#include "backends/ios/views/Transaction.h"

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Guard.h"

namespace tarni::ios {

void Transaction::flush() {
  guarded([] { [::CATransaction flush]; });
}

}  // namespace tarni::ios
