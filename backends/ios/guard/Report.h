// Reports that are worth one line of the system log, however often they are made: five walks a
// second would fill it. Any thread.
#pragma once

#include <string_view>

namespace tarni::ios {

// "-[UITouch setGestureView:] is missing here: gesture views are not set".
void reportMissing(std::string_view which, std::string_view whatNoLongerWorks) noexcept;

// Writes the line unless one has been written for the same subject.
void reportOnce(std::string_view subject, std::string_view line) noexcept;

}  // namespace tarni::ios
