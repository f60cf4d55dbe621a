# One slice of the library for iOS, with Xcode's compiler:
#   cmake -B build/ios-device --toolchain cmake/ios.toolchain.cmake -DTARNI_SLICE=device
# Slices: device (arm64), simulator-arm64 (Macs with Apple silicon), simulator-x86_64 (Intel Macs).
set(TARNI_SLICE device CACHE STRING "device, simulator-arm64 or simulator-x86_64")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TARNI_SLICE)

set(CMAKE_SYSTEM_NAME iOS)
set(CMAKE_OSX_DEPLOYMENT_TARGET 12.0 CACHE STRING "")
if(TARNI_SLICE STREQUAL "device")
  set(CMAKE_OSX_ARCHITECTURES arm64 CACHE STRING "")
  set(CMAKE_OSX_SYSROOT iphoneos CACHE STRING "")
elseif(TARNI_SLICE STREQUAL "simulator-arm64")
  # There was no such simulator before.
  set(CMAKE_OSX_DEPLOYMENT_TARGET 14.0 CACHE STRING "" FORCE)
  set(CMAKE_OSX_ARCHITECTURES arm64 CACHE STRING "")
  set(CMAKE_OSX_SYSROOT iphonesimulator CACHE STRING "")
elseif(TARNI_SLICE STREQUAL "simulator-x86_64")
  set(CMAKE_OSX_ARCHITECTURES x86_64 CACHE STRING "")
  set(CMAKE_OSX_SYSROOT iphonesimulator CACHE STRING "")
else()
  message(FATAL_ERROR "TARNI_SLICE is none of device, simulator-arm64, simulator-x86_64: ${TARNI_SLICE}")
endif()
# What comes from the Mac itself: headers of libraries without code, and programs.
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
