# How much of the project is built. Pages in web views, the backend for iOS, and the tests with the
# benchmarks are left out where what they need is not installed, with one line that says so.

option(TARNI_COMPLETE "Take it for an error when something has to be left out" OFF)
option(TARNI_BUILD_TESTS "Build the tests" ON)
option(TARNI_BUILD_BENCHMARKS "Build the benchmarks" ON)

# Sets the variable to whether all of the other variables hold; says what is left out when not.
#   tarni_extent(VARIABLE what "command that installs it" variable…)
function(tarni_extent variable what command)
  foreach(needed ${ARGN})
    if(NOT ${needed})
      set(${variable} OFF PARENT_SCOPE)
      set(message "left out: ${what} (${command} installs what is missing)")
      if(TARNI_COMPLETE)
        message(FATAL_ERROR "${message}")
      endif()
      message(NOTICE "${message}")
      return()
    endif()
  endforeach()
  set(${variable} ON PARENT_SCOPE)
endfunction()

if(IOS)
  set(TARNI_WITH_IOS ON)
  return()
endif()

# Both majors of Qt stand side by side. The targets of Qt 6 name each other without the major
# (Qt::Core), and such a name belongs to the major that is found first.
set(QT_NO_CREATE_VERSIONLESS_FUNCTIONS ON)
find_package(Qt6 REQUIRED COMPONENTS Core Gui Widgets Network OpenGL Qml QmlModels Quick)
find_package(Qt6 QUIET OPTIONAL_COMPONENTS WebEngineWidgets WebEngineQuick)
find_package(Qt5WebEngineWidgets QUIET)
find_program(TARNI_NODE node)
find_program(TARNI_NPM npm)
tarni_extent(TARNI_WITH_PAGES "pages in web views" "tools/setup pages"
  Qt5WebEngineWidgets_FOUND Qt6WebEngineWidgets_FOUND TARNI_NODE TARNI_NPM)

tarni_extent(TARNI_WITH_INSPECTOR "the page of tarni inspect" "tools/setup pages"
  TARNI_NODE TARNI_NPM)

find_program(TARNI_CLANG clang-19)
find_path(TARNI_GNUSTEP Foundation/Foundation.h PATHS /usr/include/GNUstep NO_DEFAULT_PATH)
tarni_extent(TARNI_WITH_IOS "the backend for iOS" "tools/setup ios" TARNI_CLANG TARNI_GNUSTEP)

if(TARNI_BUILD_TESTS OR TARNI_BUILD_BENCHMARKS)
  find_package(GTest QUIET)
  find_package(benchmark QUIET)
  tarni_extent(TARNI_WITH_TESTS "tests and benchmarks" tools/setup
    TARNI_WITH_PAGES TARNI_WITH_IOS GTest_FOUND benchmark_FOUND)
endif()
