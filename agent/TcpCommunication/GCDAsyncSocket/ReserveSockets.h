// ReserveSockets: one open socket a family, for a moment at which the program has used up its
// descriptors and a port has to be listened on again: there is one try at it. Any thread.
#pragma once

#include <mutex>

#include "agent/TcpCommunication/GCDAsyncSocket/FileDescriptor.h"

namespace tarni {

class ReserveSockets {
 public:
  // The process's own.
  static ReserveSockets& shared();

  // Opens what is missing, as far as there are descriptors. For moments at which some are free.
  void fill();
  // Not open when there is none.
  FileDescriptor take(int family);

 private:
  FileDescriptor& of(int family);

  std::mutex mutex_;
  FileDescriptor socket4_;
  FileDescriptor socket6_;
};

}  // namespace tarni
