// What the agent's library finds in the extension for Qt Quick.
#include "backends/qt/quick/QuickExtension.h"

extern "C" [[gnu::visibility("default")]] tarni::qt::QtExtension* tarniMakeQtExtension() {
  return new tarni::qt::QuickExtension;
}
