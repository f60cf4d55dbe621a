// Owned<T*>: one reference to an Objective-C object, given back with the owner. The backend is
// compiled without ARC, and this is the only place that retains and releases.
#pragma once

#include <utility>

#include "backends/ios/Apple.h"

namespace tarni::ios {

template <typename Object>
class Owned {
 public:
  Owned() noexcept = default;
  // Adds a reference of its own; null is fine.
  explicit Owned(Object object) : object_([object retain]) {}
  // Takes over the reference of what `alloc`, `new` or `copy` gave.
  static Owned adopting(Object object) noexcept {
    Owned owned;
    owned.object_ = object;
    return owned;
  }
  Owned(const Owned& other) : Owned(other.object_) {}
  Owned(Owned&& other) noexcept : object_(std::exchange(other.object_, nil)) {}
  Owned& operator=(Owned other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Owned() { [object_ release]; }

  Object get() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nil; }

 private:
  Object object_ = nil;
};

}  // namespace tarni::ios
