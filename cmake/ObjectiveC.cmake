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

# Where C++ sources are joined, the Objective-C++ ones of a folder are, too, which CMake does not do.
function(tarni_join_objective_cxx target)
  if(NOT CMAKE_UNITY_BUILD)
    return()
  endif()
  get_target_property(sources ${target} SOURCES)
  set(joined ${sources})
  list(FILTER joined INCLUDE REGEX "\\.mm$")
  list(FILTER sources EXCLUDE REGEX "\\.mm$")
  set(folders "")
  foreach(source ${joined})
    get_filename_component(source "${source}" ABSOLUTE)
    get_filename_component(folder "${source}" DIRECTORY)
    list(APPEND folders "${folder}")
    string(MD5 key "${folder}")
    string(APPEND text_${key} "#include \"${source}\"\n")
  endforeach()
  list(REMOVE_DUPLICATES folders)
  foreach(folder ${folders})
    string(MD5 key "${folder}")
    get_filename_component(name "${folder}" NAME)
    set(unity "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/Unity/${name}.mm")
    file(CONFIGURE OUTPUT "${unity}" CONTENT "${text_${key}}" @ONLY)
    list(APPEND sources "${unity}")
  endforeach()
  set_property(TARGET ${target} PROPERTY SOURCES ${sources})
endfunction()

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
  "$<${objective_c}:-fobjc-runtime=gcc;-fobjc-exceptions;-fexceptions;-fblocks>"
  "$<${objective_c}:-fconstant-string-class=NSConstantString;-idirafter${gcc_headers}>")
target_compile_definitions(tarni_foundation INTERFACE
  "$<${objective_c}:GNUSTEP;GNUSTEP_BASE_LIBRARY=1;GNU_RUNTIME=1;_NATIVE_OBJC_EXCEPTIONS>")
target_include_directories(tarni_foundation SYSTEM INTERFACE
  $<${objective_c}:/usr/include/GNUstep>)
# What of the system's C interfaces the backend uses, which tests/darwin stands in for.
target_include_directories(tarni_foundation SYSTEM INTERFACE "${CMAKE_SOURCE_DIR}/tests/darwin/include")
# GNUstep's library has a runtime for blocks of its own, which fails: the one that works comes first.
target_link_libraries(tarni_foundation INTERFACE BlocksRuntime gnustep-base objc)
