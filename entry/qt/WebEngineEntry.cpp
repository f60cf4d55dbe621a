// What the agent's library finds in the extension for web views in widgets.
#include "backends/qt/webengine/WebEngineExtension.h"

extern "C" [[gnu::visibility("default")]] tarni::qt::QtExtension* tarniMakeQtExtension() {
  return new tarni::qt::WebEngineExtension;
}
