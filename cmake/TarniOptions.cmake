# Compiler settings of every target, and the functions with which layers are declared.

set(TARNI_SANITIZE "" CACHE STRING "Sanitizer of all targets: address, undefined, thread or empty")

option(TARNI_FUZZ "Build the fuzzers; needs clang, whose warnings count for nothing" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(TARNI_CCACHE ccache)
if(TARNI_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${TARNI_CCACHE}")
endif()

if(NOT IOS)
  find_package(PkgConfig REQUIRED)
endif()
find_package(Threads REQUIRED)

# g++ 12 takes a literal joined with a string for overlapping memory (GCC bug 105651).
if(TARNI_FUZZ)
  # Comparisons of numbers are not traced: half of an input's time, and words are compared by memcmp, which is.
  set(not_counted "${CMAKE_SOURCE_DIR}/tests/fuzz/not_counted.txt")
  add_compile_options(-w -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=vptr
    -fno-sanitize-recover=all -fno-omit-frame-pointer
    -fno-sanitize-coverage=trace-cmp "-fsanitize-coverage-ignorelist=${not_counted}")
  add_link_options(-fsanitize=address,undefined)
  # clang does not take an empty string of g++'s library for a constant.
  add_compile_definitions(constinit=)
else()
  # Apple's compiler and SDK warn anew with every version, of what one of them deprecates, say.
  add_compile_options(-Wall -Wextra -Wpedantic
    $<$<NOT:$<CXX_COMPILER_ID:AppleClang>>:-Werror>
    $<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Wnon-virtual-dtor>
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
endif()
if(CMAKE_UNITY_BUILD)
  # What is nobody else's in a source is nobody else's in the sources joined with it, too.
  add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-subobject-linkage>)
endif()
# Objective-C is another compiler's: its address and undefined-behaviour sanitizers meet the runtime libraries
# of g++'s, but for the check of a function's type. Its thread sanitizer asks for functions that those lack.
if(TARNI_SANITIZE)
  set(sanitized -fsanitize=${TARNI_SANITIZE} -fno-omit-frame-pointer -g1)
  if(TARNI_SANITIZE STREQUAL "undefined")
    list(APPEND sanitized -fno-sanitize-recover=all -fno-sanitize=vptr
      $<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:-fno-sanitize=function>)
  endif()
  set(sanitized_languages CXX,OBJC,OBJCXX)
  if(TARNI_SANITIZE STREQUAL "thread")
    set(sanitized_languages CXX)
  endif()
  add_compile_options("$<$<COMPILE_LANGUAGE:${sanitized_languages}>:${sanitized}>")
  add_link_options(-fsanitize=${TARNI_SANITIZE})
endif()

# Lets a library decide by its list of exports what of the target's is seen from outside.
function(tarni_exportable target)
  set_target_properties(${target} PROPERTIES
    CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
endfunction()

# A layer: one static library of all sources below the current folder.
#   tarni_layer(NAME target [LINK target…])
function(tarni_layer)
  cmake_parse_arguments(LAYER "" "NAME" "LINK" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "*.cpp")
  if(sources)
    add_library(${LAYER_NAME} STATIC ${sources})
    target_include_directories(${LAYER_NAME} PUBLIC "${CMAKE_SOURCE_DIR}")
    target_link_libraries(${LAYER_NAME} PUBLIC ${LAYER_LINK})
  endif()
endfunction()
