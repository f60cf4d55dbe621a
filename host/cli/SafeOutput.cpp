#include "host/cli/SafeOutput.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <streambuf>
#include <string>

#include "host/guard/Printable.h"

namespace tarni::host {

// Keeps nothing back but the start of a character whose rest has not come yet.
class SafeOutput::Filter : public std::streambuf {
 public:
  Filter(std::ostream& stream, int descriptor)
      : stream_(stream),
        target_(stream.rdbuf(this)),
        hasStyles_(isatty(descriptor) == 1 && std::getenv("NO_COLOR") == nullptr) {}
  Filter(const Filter&) = delete;
  Filter& operator=(const Filter&) = delete;
  ~Filter() override {
    finishCharacter();
    stream_.rdbuf(target_);
  }

  void setStyle(std::string_view code) {
    if (hasStyles_) writeRaw(code);
  }
  void writeRaw(std::string_view bytes) {
    finishCharacter();
    put(bytes);
  }

 protected:
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    unfinished_.append(bytes, static_cast<std::size_t>(count));
    const auto whole = wholeCharacters(unfinished_);
    const bool isWritten = put(printableLines(std::string_view(unfinished_).substr(0, whole)));
    unfinished_.erase(0, whole);
    return isWritten ? count : 0;
  }
  int_type overflow(int_type byte) override {
    if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
    const char text = traits_type::to_char_type(byte);
    return xsputn(&text, 1) == 1 ? byte : traits_type::eof();
  }
  int sync() override { return target_->pubsync(); }

 private:
  bool put(std::string_view text) {
    const auto size = static_cast<std::streamsize>(text.size());
    return target_->sputn(text.data(), size) == size;
  }
  void finishCharacter() {
    put(printableLines(unfinished_));
    unfinished_.clear();
  }

  std::ostream& stream_;
  std::streambuf* target_;
  bool hasStyles_;
  std::string unfinished_;
};

SafeOutput::SafeOutput()
    : out_(std::make_unique<Filter>(std::cout, STDOUT_FILENO)),
      error_(std::make_unique<Filter>(std::cerr, STDERR_FILENO)) {}

SafeOutput::~SafeOutput() = default;

void SafeOutput::setStyle(std::ostream& out, std::string_view code) {
  if (auto* const filter = dynamic_cast<Filter*>(out.rdbuf())) filter->setStyle(code);
}

void SafeOutput::writeRaw(std::ostream& out, std::string_view bytes) {
  if (auto* const filter = dynamic_cast<Filter*>(out.rdbuf())) filter->writeRaw(bytes);
}

}  // namespace tarni::host
