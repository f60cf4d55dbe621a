// Screen: the main UIScreen. Main thread.
#pragma once

#include "platform/UIKit/UIApplication.h"

namespace tarni::ios {

class Screen : public platform::UIScreen {
 public:
  platform::CGRect bounds() const override;
  double scale() const override;
};

}  // namespace tarni::ios
