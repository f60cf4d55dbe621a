// AMUtils: small helpers on system-control values, percentages and dates. Any thread, except for
// what asks the screen or the application, which belongs to the main thread. Kept for callers from
// outside.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarni {

class AMUtils {
 public:
  // --- system-control values

  // The integer under the name, as one of 4 or 8 bytes; 0 when there is none.
  static std::uint64_t getSysCtl64WithSpecifier(std::string_view specifier);
  // The text under the name; empty when there is none.
  static std::string getSysCtlChrWithSpecifier(std::string_view specifier);
  // Copies the value's bytes to `pointer` and returns their number; 0, with nothing copied, when
  // there is no such name or the value needs more than `size` bytes.
  static std::size_t getSysCtlPtrWithSpecifier(std::string_view specifier, void* pointer,
                                               std::size_t size);
  // The integer under one of the system's numbers for hardware facts (3: processors, 7: page size,
  // 24: memory size, 25: processors that are active); 0 for any other.
  static std::uint64_t getSysCtlHw(std::uint32_t hwSpecifier);

  // --- arithmetic

  // The value that lies `percent` of the way from min to max.
  static double percentageValueFromMax(double max, double min, double percent);
  // How far the value lies from `from` to `to`, in percent; 0 when both are the same.
  static double valuePercentFrom(double from, double to, double value);
  // From 0 up to, not including, 1.
  static double random();
  // Bytes as text in the largest unit of which they make at least one ("1.50 GB"), with so many
  // decimals.
  static std::string toNearestMetric(std::uint64_t value, int desiredFraction);

  // --- the device

  static bool isIPad();
  static bool isIPhone();
  // A phone whose screen is 568 points high. Main thread.
  static bool isIPhone5();

  // --- others

  // Whether so many seconds have passed since the date.
  static bool dateDidTimeout(std::chrono::system_clock::time_point date, double seconds);
  // Opens the application's page in the store. Main thread.
  static void openReviewAppPage();
};

}  // namespace tarni
