#include "backends/qt/QtViewCore.h"

namespace tarni::qt {

platform::CGPoint QtViewCore::center() const {
  const platform::CGRect outer = frame();
  return {outer.midX(), outer.midY()};
}

}  // namespace tarni::qt
