// Files: what the tool keeps of a person's doings, passwords among them, is for this user alone;
// and what it reads may be somebody else's. Failures are std::runtime_errors that name the file.
// Any thread.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace tarni::host {

// A file that only this user reads. It is made anew beside its place and takes it when it is kept:
// until then the file that stands there stays, and afterwards it is replaced, never written into. A
// link is followed when it is this user's or root's; one that somebody else laid is refused. What
// is not an ordinary file, as /dev/null, is written to as it stands.
class PrivateFile {
 public:
  explicit PrivateFile(const std::filesystem::path& path);
  PrivateFile(const PrivateFile&) = delete;
  PrivateFile& operator=(const PrivateFile&) = delete;
  // Leaves nothing of a file that was not kept.
  ~PrivateFile();

  void write(std::string_view bytes);
  // Over what stands `at` so many bytes from the start.
  void write(std::string_view bytes, off_t at);
  void keep();

 private:
  void openPlace();
  void openPart();
  [[noreturn]] void fail() const;

  std::filesystem::path path_;   // as it was asked for
  std::filesystem::path place_;  // where the links lead
  std::string part_;             // the name until it is kept; "" afterwards
  int descriptor_ = -1;
};

// Throws unless the file could be written; leaves it, or its absence, as it is.
void requireWritable(const std::filesystem::path& path);

void writePrivateFile(const std::filesystem::path& path, std::string_view bytes);

// What is missing of the folder and those above it is made for this user alone.
void makePrivateFolder(const std::filesystem::path& path);

struct ReadFile {
  std::string text;
  // Why it may not be this user's own work: "it belongs to another user"; "" when nobody else could
  // write it.
  std::string whyForeign;
};
ReadFile readFile(const std::filesystem::path& path);

}  // namespace tarni::host
