// Screen: the main screen. Main thread.
#pragma once

#include "platform/UIKit/UIApplication.h"

namespace tarni::headless {

class Screen : public platform::UIScreen {
 public:
  platform::CGRect bounds() const override { return {{0, 0}, size_}; }
  double scale() const override { return scale_; }
  void setSize(platform::CGSize size) { size_ = size; }
  void setScale(double scale) { scale_ = scale; }

 private:
  platform::CGSize size_{390, 844};
  double scale_ = 2;
};

}  // namespace tarni::headless
