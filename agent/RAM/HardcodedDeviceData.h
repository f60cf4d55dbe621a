// HardcodedDeviceData: facts about device models that no system call tells. One thread at a time.
// Kept for callers from outside.
#pragma once

#include <cstdint>
#include <string_view>

namespace tarni {

class HardcodedDeviceData {
 public:
  // The row of models that the table does not list.
  static constexpr int kUnknownDevice = 41;

  static HardcodedDeviceData& sharedDeviceData();

  // Chooses the row of a machine identifier ("iPhone7,2").
  void setHwMachine(std::string_view identifier) { iDevice_ = hwMachineToIdevice(identifier); }
  int hwMachineToIdevice(std::string_view identifier) const;

  // An index into the table.
  int iDevice() const { return iDevice_; }
  // An index outside the table counts as the unknown device's.
  void setiDevice(int index);

  std::string_view getiDeviceName() const;
  std::string_view getCPUName() const;
  // MHz.
  std::int64_t getCPUFrequency() const;
  std::string_view getCoprocessorName() const;
  std::string_view getGraphicCardName() const;
  std::string_view getRAMType() const;
  // mAh.
  std::int64_t getBatteryCapacity() const;
  // V.
  float getBatteryVoltage() const;
  // The diagonal in inches.
  float getScreenSize() const;
  // Pixels an inch.
  std::int64_t getPPI() const;
  std::string_view getAspectRatio() const;

 private:
  int iDevice_ = kUnknownDevice;
};

}  // namespace tarni
