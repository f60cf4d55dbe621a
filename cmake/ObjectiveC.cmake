# Objective-C and Objective-C++, for backends/ios and its double of UIKit on Linux: clang on GNUstep,
# since g++'s Objective-C has neither fast enumeration nor exceptions that meet C++'s. C++ stays with the
# project's compiler; both use its standard library.
if(NOT IOS)
  find_program(CMAKE_OBJC_COMPILER clang-19 REQUIRED)
  find_program(CMAKE_OBJCXX_COMPILER clang++-19 REQUIRED)
endif()
enable_language(OBJC)
enable_language(OBJCXX)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_OBJC_STANDARD 11)
set(CMAKE_OBJC_VISIBILITY_PRESET hidden)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)
if(TARNI_CCACHE)
  set(CMAKE_OBJC_COMPILER_LAUNCHER "${TARNI_CCACHE}")
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER "${TARNI_CCACHE}")
endif()

add_library(tarni_foundation INTERFACE)
if(IOS)
  foreach(framework Foundation UIKit QuartzCore CoreGraphics CoreFoundation)
    target_link_libraries(tarni_foundation INTERFACE "-framework ${framework}")
  endforeach()
  target_link_libraries(tarni_foundation INTERFACE objc)
  return()
endif()

# GNUstep's Foundation on the runtime that Debian has, whose headers come with gcc.
set(objective_c $<COMPILE_LANGUAGE:OBJC,OBJCXX>)
file(GLOB gcc_headers "/usr/lib/gcc/*/*/include/objc")
list(GET gcc_headers -1 gcc_headers)
get_filename_component(gcc_headers "${gcc_headers}" DIRECTORY)
target_compile_options(tarni_foundation INTERFACE
  "$<${objective_c}:-fobjc-runtime=gcc;-fobjc-exceptions;-fexceptions>"
  "$<${objective_c}:-fconstant-string-class=NSConstantString;-idirafter${gcc_headers}>")
target_compile_definitions(tarni_foundation INTERFACE
  "$<${objective_c}:GNUSTEP;GNUSTEP_BASE_LIBRARY=1;GNU_RUNTIME=1;_NATIVE_OBJC_EXCEPTIONS>")
target_include_directories(tarni_foundation SYSTEM INTERFACE
  $<${objective_c}:/usr/include/GNUstep>)
# What of the system's C interfaces the backend uses, which tests/darwin stands in for.
target_include_directories(tarni_foundation SYSTEM INTERFACE "${CMAKE_SOURCE_DIR}/tests/darwin/include")
target_link_libraries(tarni_foundation INTERFACE gnustep-base objc)
