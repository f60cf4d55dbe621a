// TextStyle: how a text is drawn. Plain value.
#pragma once

#include "platform/QuartzCore/CALayer.h"

namespace tarni::headless {

enum class TextAlignment { Left, Center, Right };

namespace colors {
inline constexpr platform::CGColor black{0, 0, 0, 1};
inline constexpr platform::CGColor white{1, 1, 1, 1};
inline constexpr platform::CGColor gray{0.56, 0.56, 0.58, 1};
inline constexpr platform::CGColor lightGray{0.78, 0.78, 0.8, 1};
inline constexpr platform::CGColor background{0.95, 0.95, 0.97, 1};
inline constexpr platform::CGColor blue{0, 0.48, 1, 1};
inline constexpr platform::CGColor green{0.3, 0.85, 0.39, 1};
}  // namespace colors

struct TextStyle {
  double size = 17;  // points
  bool bold = false;
  platform::CGColor color = colors::black;
  TextAlignment alignment = TextAlignment::Left;
};

}  // namespace tarni::headless
