// Guid: a UUID that the agent has given to a view. Hardly anybody asks for its text of 36
// characters, so that is made when somebody does; until then it is a number. Main thread.
#pragma once

#include <cstdint>
#include <string>

namespace tarni::platform {

class Guid {
 public:
  // None.
  Guid() = default;
  // One that was never given before.
  static Guid next();

  explicit operator bool() const { return number_ != 0; }
  bool operator==(const Guid&) const = default;

  // Counted from 1; 0 is none.
  std::uint32_t number() const { return number_; }
  // A random UUID in its canonical upper-case form, always the same for this one. Lives as long as
  // the process. Not for none.
  const std::string& text() const;

 private:
  explicit Guid(std::uint32_t number) : number_(number) {}

  std::uint32_t number_ = 0;
};

}  // namespace tarni::platform
