// QtPaintWatch: tells the agent's observer which windows are painted, opened, closed and renamed.
// Nothing looks at the program's events while nobody observes. GUI thread.
#pragma once

#include "platform/UIKit/PaintObserver.h"

namespace tarni::qt {

// From now on; null ends it. The observer must live until then.
void observePainting(platform::PaintObserver* observer);

}  // namespace tarni::qt
