#include "agent/RAM/HardcodedDeviceData.h"

#include <algorithm>
#include <array>

namespace tarni {
namespace {

struct Device {
  // One machine, or two that differ in nothing else.
  std::array<std::string_view, 2> identifiers;
  std::string_view name;
  std::string_view cpu;
  std::int64_t megahertz;
  std::string_view coprocessor;
  std::string_view graphics;
  std::string_view ramType;
  std::int64_t batteryCapacity;
  float batteryVoltage;
  float screenSize;
  std::int64_t ppi;
  std::string_view aspectRatio;
};

// clang-format off
constexpr std::array kDevices{
    Device{{"iPhone1,1"}, "iPhone 1G", "ARM 1176JZ", 412, "N/A", "PowerVR MBX Lite", "LPDDR DRAM", 1400, 3.7F, 3.5F, 163, "3:2"},
    Device{{"iPhone1,2"}, "iPhone 3G", "ARM 1176JZ", 620, "N/A", "PowerVR MBX Lite", "LPDDR DRAM", 1150, 3.7F, 3.5F, 163, "3:2"},
    Device{{"iPhone2,1"}, "iPhone 3GS", "ARM Cortex-A8", 600, "N/A", "PowerVR SGX535", "LPDDR DRAM", 1219, 3.7F, 3.5F, 163, "3:2"},
    Device{{"iPhone3,1"}, "iPhone 4", "Apple A4", 800, "N/A", "PowerVR SGX535", "LPDDR2 DRAM", 1420, 3.7F, 3.5F, 326, "3:2"},
    Device{{"iPhone3,3"}, "Verizon iPhone 4", "Apple A4", 800, "N/A", "PowerVR SGX535", "LPDDR2 DRAM", 1420, 3.7F, 3.5F, 326, "3:2"},
    Device{{"iPhone4,1"}, "iPhone 4S", "Apple A5", 800, "N/A", "PowerVR SGX543", "LPDDR2 DRAM", 1430, 3.7F, 3.5F, 326, "3:2"},
    Device{{"iPhone5,1"}, "iPhone 5 (GSM)", "Apple A6", 1300, "N/A", "PowerVR SGX543MP3", "LPDDR2 DRAM", 1440, 3.8F, 4.0F, 326, "16:9"},
    Device{{"iPhone5,2"}, "iPhone 5 (CDMA)", "Apple A6", 1300, "N/A", "PowerVR SGX543MP3", "LPDDR2 DRAM", 1440, 3.8F, 4.0F, 326, "16:9"},
    Device{{"iPhone5,3", "iPhone5,4"}, "iPhone 5C", "Apple A6", 1000, "N/A", "PowerVR SGX543MP3", "LPDDR2 DRAM", 1507, 3.8F, 4.0F, 326, "16:9"},
    Device{{"iPhone6,1", "iPhone6,2"}, "iPhone 5S", "Apple A7", 1300, "Apple M7 motion", "PowerVR G6430", "LPDDR3 DRAM", 1570, 3.8F, 4.0F, 326, "16:9"},
    Device{{"iPhone7,2"}, "iPhone 6", "Apple A8", 1400, "Apple M8 motion", "PowerVR GX6450", "LPDDR3 DRAM", 1810, 3.82F, 4.7F, 326, "16:9"},
    Device{{"iPhone7,1"}, "iPhone 6 Plus", "Apple A8", 1400, "Apple M8 motion", "PowerVR GX6450", "LPDDR3 DRAM", 2915, 3.82F, 5.5F, 401, "16:9"},
    Device{{"iPhone8,1"}, "iPhone 6S", "Apple A9", 1850, "Apple M9 motion", "PowerVR GT6700", "LPDDR4 DRAM", 1715, 3.82F, 4.7F, 326, "16:9"},
    Device{{"iPhone8,2"}, "iPhone 6S Plus", "Apple A9", 1850, "Apple M9 motion", "PowerVR GT6700", "LPDDR4 DRAM", 2750, 3.8F, 5.5F, 401, "16:9"},
    Device{{"iPod1,1"}, "iPod Touch 1G", "ARM 1176JZ", 400, "N/A", "PowerVR MBX Lite", "LPDDR DRAM", 789, 3.7F, 3.5F, 163, "3:2"},
    Device{{"iPod2,1"}, "iPod Touch 2G", "ARM 1176JZ", 533, "N/A", "PowerVR MBX Lite", "LPDDR DRAM", 789, 3.7F, 3.5F, 163, "3:2"},
    Device{{"iPod3,1"}, "iPod Touch 3G", "ARM Cortex-A8", 600, "N/A", "PowerVR MBX Lite", "LPDDR DRAM", 930, 3.7F, 3.5F, 163, "3:2"},
    Device{{"iPod4,1"}, "iPod Touch 4G", "ARM Cortex-A8", 800, "N/A", "PowerVR MBX Lite", "LPDDR2 DRAM", 930, 3.7F, 3.5F, 326, "3:2"},
    Device{{"iPod5,1"}, "iPod Touch 5", "Apple A5", 1000, "N/A", "PowerVR MBX Lite", "LPDDR2 DRAM", 1030, 3.8F, 4.0F, 326, "16:9"},
    Device{{"iPad1,1"}, "iPad 1", "ARM Cortex-A8", 1000, "N/A", "PowerVR SGX535", "LPDDR DRAM", 6613, 3.75F, 9.7F, 132, "4:3"},
    Device{{"iPad2,1"}, "iPad 2 (WiFi)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP2", "LPDDR2 DRAM", 6930, 3.8F, 9.7F, 132, "4:3"},
    Device{{"iPad2,2"}, "iPad 2 (CDMA)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP2", "LPDDR2 DRAM", 6930, 3.8F, 9.7F, 132, "4:3"},
    Device{{"iPad2,3", "iPad2,4"}, "iPad 2 (GSM)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP2", "LPDDR2 DRAM", 6930, 3.8F, 9.7F, 132, "4:3"},
    Device{{"iPad3,1"}, "iPad 3 (WiFi)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP4", "LPDDR2 DRAM", 11560, 3.7F, 9.7F, 264, "4:3"},
    Device{{"iPad3,2"}, "iPad 3 (GSM)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP4", "LPDDR2 DRAM", 11560, 3.7F, 9.7F, 264, "4:3"},
    Device{{"iPad3,3"}, "iPad 3 (CDMA)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP4", "LPDDR2 DRAM", 11560, 3.7F, 9.7F, 264, "4:3"},
    Device{{"iPad3,4"}, "iPad 4 (WiFi)", "Apple Swift", 1400, "N/A", "PowerVR SGX554MP4", "LPDDR2 DRAM", 11560, 3.7F, 9.7F, 264, "4:3"},
    Device{{"iPad3,5"}, "iPad 4 (GSM)", "Apple Swift", 1400, "N/A", "PowerVR SGX554MP4", "LPDDR2 DRAM", 11560, 3.7F, 9.7F, 264, "4:3"},
    Device{{"iPad3,6"}, "iPad 4 (CDMA)", "Apple Swift", 1400, "N/A", "PowerVR SGX554MP4", "LPDDR2 DRAM", 11560, 3.7F, 9.7F, 264, "4:3"},
    Device{{"iPad4,1"}, "iPad Air", "Apple A7", 1400, "Apple M7 motion", "PowerVR G6430", "LPDDR3 DRAM", 8827, 3.73F, 9.7F, 264, "4:3"},
    Device{{"iPad4,2"}, "iPad Air (Cellular)", "Apple A7", 1400, "Apple M7 motion", "PowerVR G6430", "LPDDR3 DRAM", 8827, 3.73F, 9.7F, 264, "4:3"},
    Device{{"iPad5,3"}, "iPad Air 2", "Apple A8X", 1500, "Apple M8 motion", "PowerVR GXA6850", "LPDDR3 DRAM", 7340, 3.76F, 9.7F, 264, "4:3"},
    Device{{"iPad5,4"}, "iPad Air 2 (Cellular)", "Apple A8X", 1500, "Apple M8 motion", "PowerVR GXA6850", "LPDDR3 DRAM", 7340, 3.76F, 9.7F, 264, "4:3"},
    Device{{"iPad6,8"}, "iPad Pro", "Apple A9X", 2260, "Apple M9 motion", "PowerVR Series 7XT", "LPDDR4 DRAM", 10307, 3.77F, 12.9F, 264, "4:3"},
    Device{{"iPad2,5"}, "iPad Mini (WiFi)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP2", "LPDDR2 DRAM", 4440, 3.72F, 7.9F, 163, "4:3"},
    Device{{"iPad2,6"}, "iPad Mini (GSM)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP2", "LPDDR2 DRAM", 4440, 3.72F, 7.9F, 163, "4:3"},
    Device{{"iPad2,7"}, "iPad Mini (CDMA)", "ARM Cortex-A9", 1000, "N/A", "PowerVR SGX543MP2", "LPDDR2 DRAM", 4440, 3.72F, 7.9F, 163, "4:3"},
    Device{{"iPad4,4"}, "iPad Mini 2", "Apple A7", 1300, "Apple M7 motion", "PowerVR G6430", "LPDDR3 DRAM", 6471, 3.75F, 7.9F, 326, "4:3"},
    Device{{"iPad4,5"}, "iPad Mini 2 (Cellular)", "Apple A7", 1300, "Apple M7 motion", "PowerVR G6430", "LPDDR3 DRAM", 6471, 3.75F, 7.9F, 326, "4:3"},
    Device{{"iPad4,7"}, "iPad Mini 3", "Apple A7", 1300, "Apple M7 motion", "PowerVR G6430", "LPDDR3 DRAM", 6471, 3.75F, 7.9F, 326, "4:3"},
    Device{{"iPad4,8"}, "iPad Mini 3 (Cellular)", "Apple A7", 1300, "Apple M7 motion", "PowerVR G6430", "LPDDR3 DRAM", 6471, 3.75F, 7.9F, 326, "4:3"},
    Device{{}, "Unknown", "Unknown", 0, "Unknown", "Unknown", "Unknown", 0, 0.0F, 0.0F, 0, "0:0"},
};
// clang-format on
static_assert(kDevices.size() == HardcodedDeviceData::kUnknownDevice + 1);

const Device& device(int index) {
  return kDevices.at(static_cast<std::size_t>(index));
}

}  // namespace

HardcodedDeviceData& HardcodedDeviceData::sharedDeviceData() {
  static HardcodedDeviceData data;
  return data;
}

int HardcodedDeviceData::hwMachineToIdevice(std::string_view identifier) const {
  const auto isListed = [identifier](const Device& row) {
    return !identifier.empty() &&
           std::ranges::find(row.identifiers, identifier) != row.identifiers.end();
  };
  const auto* const row = std::ranges::find_if(kDevices, isListed);
  return row == kDevices.end() ? kUnknownDevice : static_cast<int>(row - kDevices.begin());
}

void HardcodedDeviceData::setiDevice(int index) {
  iDevice_ = index >= 0 && index < kUnknownDevice ? index : kUnknownDevice;
}

std::string_view HardcodedDeviceData::getiDeviceName() const {
  return device(iDevice_).name;
}

std::string_view HardcodedDeviceData::getCPUName() const {
  return device(iDevice_).cpu;
}

std::int64_t HardcodedDeviceData::getCPUFrequency() const {
  return device(iDevice_).megahertz;
}

std::string_view HardcodedDeviceData::getCoprocessorName() const {
  return device(iDevice_).coprocessor;
}

std::string_view HardcodedDeviceData::getGraphicCardName() const {
  return device(iDevice_).graphics;
}

std::string_view HardcodedDeviceData::getRAMType() const {
  return device(iDevice_).ramType;
}

std::int64_t HardcodedDeviceData::getBatteryCapacity() const {
  return device(iDevice_).batteryCapacity;
}

float HardcodedDeviceData::getBatteryVoltage() const {
  return device(iDevice_).batteryVoltage;
}

float HardcodedDeviceData::getScreenSize() const {
  return device(iDevice_).screenSize;
}

std::int64_t HardcodedDeviceData::getPPI() const {
  return device(iDevice_).ppi;
}

std::string_view HardcodedDeviceData::getAspectRatio() const {
  return device(iDevice_).aspectRatio;
}

}  // namespace tarni
