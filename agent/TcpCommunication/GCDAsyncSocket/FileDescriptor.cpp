#include "agent/TcpCommunication/GCDAsyncSocket/FileDescriptor.h"

#include <sys/socket.h>
#include <unistd.h>

namespace tarni {

FileDescriptor::~FileDescriptor() {
  if (!isOpen()) return;
  // Children made without the library's fork() have it, too: for them the port would be taken and
  // the connection stand until they close it.
  shutdown(descriptor_, SHUT_RDWR);
  ForkedChildren::leaveTo(descriptor_);
  close(descriptor_);
}

}  // namespace tarni
