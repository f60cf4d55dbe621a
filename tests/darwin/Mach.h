// What a test sees of the double of Mach.
#pragma once

#include <cstddef>

namespace tarni::test {

// The words that the kernel gave and nobody gave back.
extern std::size_t wordsKept;
// The references to the host's port that were given out.
extern int hostReferences;

}  // namespace tarni::test
