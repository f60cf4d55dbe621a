// TextStyle: how a text is drawn. Plain value.
#pragma once

#include "platform/QuartzCore/CALayer.h"

namespace tarni::headless {

enum class TextAlignment { Left, Center, Right };

namespace colors {
inline constexpr platform::CGColor kBlack{0, 0, 0, 1};
inline constexpr platform::CGColor kWhite{1, 1, 1, 1};
inline constexpr platform::CGColor kGray{0.56, 0.56, 0.58, 1};
inline constexpr platform::CGColor kLightGray{0.78, 0.78, 0.8, 1};
inline constexpr platform::CGColor kBackground{0.95, 0.95, 0.97, 1};
inline constexpr platform::CGColor kBlue{0, 0.48, 1, 1};
inline constexpr platform::CGColor kGreen{0.3, 0.85, 0.39, 1};
}  // namespace colors

struct TextStyle {
  double size = 17;  // points
  bool bold = false;
  platform::CGColor color = colors::kBlack;
  TextAlignment alignment = TextAlignment::Left;
};

}  // namespace tarni::headless
