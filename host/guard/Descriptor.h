// Descriptor: an open file or socket that is closed with it. Any thread.
#pragma once

#include <unistd.h>

namespace tarni::host {

class Descriptor {
 public:
  // A negative number, as failed calls return it, stands for none.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int number() const { return number_; }

 private:
  int number_;
};

}  // namespace tarni::host
