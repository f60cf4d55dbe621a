// The platform of an application of UIKit's. Main thread.
#pragma once

#include "platform/Platform.h"

namespace tarni::ios {

// Always the same one; its parts live as long as the process. It may be asked for while classes are
// loaded, before the application object is made.
platform::Platform iosPlatform();

}  // namespace tarni::ios
