#include "agent/RAM/AMUtils.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <random>
#include <vector>

#include "agent/core/state/Utilities_Text.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr std::string_view kReviewPage = "https://apps.apple.com/app/id0?action=write-review";
constexpr double kHeightOfIPhone5 = 568;

struct HardwareFact {
  std::uint32_t specifier;
  std::string_view name;
};

constexpr std::array<HardwareFact, 4> kHardwareFacts{{
    {3, "hw.ncpu"},
    {7, "hw.pagesize"},
    {24, "hw.memsize"},
    {25, "hw.activecpu"},
}};

std::vector<std::byte> valueOf(std::string_view specifier) {
  return platform::current().machHost->sysctlbyname(specifier).value_or(std::vector<std::byte>());
}

bool machineIs(std::string_view family) {
  return AMUtils::getSysCtlChrWithSpecifier("hw.machine").starts_with(family);
}

}  // namespace

std::uint64_t AMUtils::getSysCtl64WithSpecifier(std::string_view specifier) {
  const std::vector<std::byte> value = valueOf(specifier);
  if (value.size() == sizeof(std::uint32_t)) {
    std::uint32_t number = 0;
    std::memcpy(&number, value.data(), sizeof number);
    return number;
  }
  std::uint64_t number = 0;
  if (value.size() == sizeof number) std::memcpy(&number, value.data(), sizeof number);
  return number;
}

std::string AMUtils::getSysCtlChrWithSpecifier(std::string_view specifier) {
  const std::vector<std::byte> value = valueOf(specifier);
  const auto end = std::ranges::find(value, std::byte{0});
  return {reinterpret_cast<const char*>(value.data()),
          static_cast<std::size_t>(end - value.begin())};
}

std::size_t AMUtils::getSysCtlPtrWithSpecifier(std::string_view specifier, void* pointer,
                                               std::size_t size) {
  const std::vector<std::byte> value = valueOf(specifier);
  if (value.empty() || value.size() > size) return 0;
  std::memcpy(pointer, value.data(), value.size());
  return value.size();
}

std::uint64_t AMUtils::getSysCtlHw(std::uint32_t hwSpecifier) {
  const auto* const fact = std::ranges::find(kHardwareFacts, hwSpecifier, &HardwareFact::specifier);
  return fact == kHardwareFacts.end() ? 0 : getSysCtl64WithSpecifier(fact->name);
}

double AMUtils::percentageValueFromMax(double max, double min, double percent) {
  return min + (max - min) * percent / 100;
}

double AMUtils::valuePercentFrom(double from, double to, double value) {
  return from == to ? 0 : (value - from) / (to - from) * 100;
}

double AMUtils::random() {
  thread_local std::mt19937_64 generator{std::random_device{}()};
  return std::uniform_real_distribution<>()(generator);
}

std::string AMUtils::toNearestMetric(std::uint64_t value, int desiredFraction) {
  static constexpr std::array kUnits{"B", "KB", "MB", "GB", "TB"};
  constexpr double kStep = 1024;
  auto scaled = static_cast<double>(value);
  std::size_t unit = 0;
  for (; scaled >= kStep && unit + 1 < kUnits.size(); ++unit) scaled /= kStep;
  return Utilities::decimalText(scaled, desiredFraction) + ' ' + kUnits[unit];
}

bool AMUtils::isIPad() {
  return machineIs("iPad");
}

bool AMUtils::isIPhone() {
  return machineIs("iPhone");
}

bool AMUtils::isIPhone5() {
  return isIPhone() && platform::current().mainScreen->bounds().size.height == kHeightOfIPhone5;
}

bool AMUtils::dateDidTimeout(std::chrono::system_clock::time_point date, double seconds) {
  return std::chrono::system_clock::now() - date >= std::chrono::duration<double>(seconds);
}

void AMUtils::openReviewAppPage() {
  if (!platform::current().application->openURL(kReviewPage)) {
    platform::NSLog("No program opens the review page");
  }
}

}  // namespace tarni
