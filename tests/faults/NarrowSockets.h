// NarrowSockets: for its life the program's sockets read and write a few bytes at a time, now and
// then none at all, and are interrupted, as a busy system's are. The program is linked with
// --wrap=recv and --wrap=send; a test's own ends of a connection are left alone.
#pragma once

namespace tarni::test {

class NarrowSockets {
 public:
  // At most so many bytes a call.
  explicit NarrowSockets(long width);
  NarrowSockets(const NarrowSockets&) = delete;
  NarrowSockets& operator=(const NarrowSockets&) = delete;
  ~NarrowSockets();

  // How many calls were cut short, refused or interrupted so far.
  long cuts() const;
};

}  // namespace tarni::test
