// Listener: where the session channel listens, the value of TARNI_SESSION. Any thread.
#pragma once

#include <string>

#include "agent/TcpCommunication/GCDAsyncSocket/FileDescriptor.h"

namespace tarni::session {

// The listening end of the channel. "tcp:127.0.0.1:PORT" is a port of this machine; anything else
// the absolute path of a local socket, which goes with this.
class Listener {
 public:
  // The folder is made when it is not there, and must be this user's alone; a socket that nobody
  // answers is taken over. Throws std::runtime_error that says why it cannot be.
  explicit Listener(const std::string& address);
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener();

  int descriptor() const { return descriptor_.get(); }
  // True when the other end belongs to this user or to root.
  bool admits(int client) const;

 private:
  FileDescriptor descriptor_;
  std::string path_;  // empty for a port
};

}  // namespace tarni::session
