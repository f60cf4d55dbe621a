// SafeOutput: what stands between the tool and the terminals of its standard output and standard
// error. Whatever goes to std::cout and std::cerr passes through: control characters and overrides
// of the writing direction are shown as escapes, what is not UTF-8 as U+FFFD. Lines and tabs are
// kept, so whoever prints text from outside in the middle of a line makes it `printable`. Main
// thread.
#pragma once

#include <iosfwd>
#include <memory>
#include <string_view>

namespace tarni::host {

class SafeOutput {
 public:
  // Until its end.
  SafeOutput();
  SafeOutput(const SafeOutput&) = delete;
  SafeOutput& operator=(const SafeOutput&) = delete;
  ~SafeOutput();

  // Begins or ends a style: the tool's own escape sequence `code`, where the stream leads to a
  // terminal and NO_COLOR is unset.
  static void setStyle(std::ostream& out, std::string_view code);
  // The bytes as they are, which are for a file or another program.
  static void writeRaw(std::ostream& out, std::string_view bytes);

 private:
  class Filter;
  std::unique_ptr<Filter> out_;
  std::unique_ptr<Filter> error_;
};

}  // namespace tarni::host
