// Headless screens of any size for the benchmarks. One environment for the whole program.
#pragma once

#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"

namespace tarni::bench {

headless::Environment& environment();

// A window with `count` views below it, ten to a parent: labels "Label N", switches, text fields
// and plain containers. The windows of earlier calls are gone afterwards.
platform::UIWindowRef makeScreen(long count);

// Allocations made by this process so far.
unsigned long allocations();

}  // namespace tarni::bench
