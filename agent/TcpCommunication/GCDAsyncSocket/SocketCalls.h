// SocketCalls: what systems name and do differently about sockets. Any thread; errors are in errno.
#pragma once

#include <sys/types.h>

#include <string_view>

#include "agent/TcpCommunication/GCDAsyncSocket/FileDescriptor.h"

namespace tarni {

// A stream socket that children of the process do not inherit.
FileDescriptor openStreamSocket(int family);

// The next client that waits, non-blocking, not inherited either; answers go out at once, and a
// peer that vanished without a word is found out within minutes.
FileDescriptor acceptClient(int listener);

// False when the system refuses.
bool makeNonBlocking(int descriptor);

// As `send`, without a signal when the peer has gone.
ssize_t sendWithoutSignal(int connection, std::string_view data);

}  // namespace tarni
