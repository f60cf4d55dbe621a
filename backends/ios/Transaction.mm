#include "backends/ios/Transaction.h"

#include "backends/ios/Apple.h"
#include "backends/ios/Guard.h"

namespace tarni::ios {

void Transaction::flush() {
  guarded([] { [::CATransaction flush]; });
}

}  // namespace tarni::ios
