# Builds all slices for iOS and joins them to build/Tarni.xcframework. On a Mac with Xcode:
#   cmake -P cmake/xcframework.cmake
cmake_minimum_required(VERSION 3.25)
get_filename_component(root "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
set(build "${root}/build/ios")

foreach(slice device simulator-arm64 simulator-x86_64)
  execute_process(COMMAND "${CMAKE_COMMAND}" -S "${root}" -B "${build}/${slice}" -G Ninja
    --toolchain "${root}/cmake/ios.toolchain.cmake" -DTARNI_SLICE=${slice} -DCMAKE_BUILD_TYPE=Release
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND "${CMAKE_COMMAND}" --build "${build}/${slice}" --target Tarni
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# An XCFramework has one framework for all simulators.
set(simulator "${build}/simulator/Tarni.framework")
file(REMOVE_RECURSE "${simulator}" "${root}/build/Tarni.xcframework")
file(COPY "${build}/simulator-x86_64/lib/Tarni.framework" DESTINATION "${build}/simulator")
execute_process(COMMAND lipo -create
  "${build}/simulator-arm64/lib/Tarni.framework/Tarni" "${build}/simulator-x86_64/lib/Tarni.framework/Tarni"
  -output "${simulator}/Tarni" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND xcodebuild -create-xcframework
  -framework "${build}/device/lib/Tarni.framework" -framework "${simulator}"
  -output "${root}/build/Tarni.xcframework" COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "build/Tarni.xcframework: ios-arm64, ios-arm64_x86_64-simulator")
