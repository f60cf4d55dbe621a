// For a process that looks after what this tool started, and outlives it.
#pragma once

namespace tarni::host {

// In such a process, first of all. It holds on to nothing of the one that made it, neither its
// terminal, its output nor its connections, but `kept`, which gets another number.
void standAside(int& kept);

}  // namespace tarni::host
