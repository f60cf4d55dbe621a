// NetworkNamespace: a network of a program's own, where nothing outside reaches its ports. Linux
// only. The functions that move the calling process, which must have one thread, throw
// std::runtime_error with a sentence for a person.
#pragma once

#include <sys/types.h>

namespace tarni::host {

// Moves the process into a new network that has only the loopback interface, which is up. Whoever
// is not root needs user namespaces for it and keeps the own user identifier.
void enterNetworkOfItsOwn();

// Whether that would work, on any thread: tried by a child, as it cannot be undone.
bool canEnterNetworkOfItsOwn();

// Moves the process into the network of `pid`, a process of the same user.
void joinNetworkOf(pid_t pid);

// Whether that process is in the network of the calling one.
bool isInThisNetwork(pid_t pid);

}  // namespace tarni::host
