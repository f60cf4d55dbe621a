# The toolchain for iOS with LLVM's compiler and linker and with the hand-written headers and the reviewed
# imports of this folder in place of an SDK. TARNI_SDK is a folder that `check` fills.
include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/ios.toolchain.cmake")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TARNI_SDK)

set(CMAKE_OSX_SYSROOT "${TARNI_SDK}" CACHE PATH "" FORCE)
list(GET CMAKE_OSX_ARCHITECTURES 0 architecture)
set(triple "${architecture}-apple-ios${CMAKE_OSX_DEPLOYMENT_TARGET}")
if(TARNI_SLICE MATCHES "simulator")
  string(APPEND triple "-simulator")
endif()
foreach(language C CXX OBJC OBJCXX)
  set(CMAKE_${language}_COMPILER /usr/bin/clang-19)
  set(CMAKE_${language}_COMPILER_TARGET "${triple}")
  # musl shows what every Apple header shows by itself.
  set(CMAKE_${language}_FLAGS_INIT "-D_GNU_SOURCE")
endforeach()
set(CMAKE_CXX_COMPILER /usr/bin/clang++-19)
set(CMAKE_OBJCXX_COMPILER /usr/bin/clang++-19)
# The copy of libc++'s settings comes first: it lets the compiler refuse what the oldest system lacks.
set(libcxx "-nostdinc++ -isystem ${TARNI_SDK}/libcxx -isystem /usr/lib/llvm-19/include/c++/v1")
string(APPEND CMAKE_CXX_FLAGS_INIT " ${libcxx}")
string(APPEND CMAKE_OBJCXX_FLAGS_INIT " ${libcxx}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld")
foreach(tool AR RANLIB NM STRIP OBJDUMP INSTALL_NAME_TOOL)
  string(TOLOWER "${tool}" program)
  string(REPLACE "_" "-" program "${program}")
  set(CMAKE_${tool} "/usr/bin/llvm-${program}-19" CACHE FILEPATH "")
endforeach()
