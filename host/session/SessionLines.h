// Session files, of either version (docs/sessions.md): JSON with a header on the first line and one
// entry on each of the others, so that a file that was cut short or edited wrongly can be reported
// by its line, and a recording is whole and on disk after every step. Any thread, a file by one at
// a time.
#pragma once

#include <cstddef>
#include <filesystem>
#include <istream>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "host/guard/Files.h"
#include "host/guard/Json.h"

namespace tarni::host {

inline constexpr std::string_view kSessionEnd = "\n]}\n";

// What stands in a file, each entry with the number of its line.
struct SessionLines {
  struct Entry {
    std::size_t number = 0;
    Json value;
  };

  std::string name;  // what errors call the file
  int version = 0;   // 1 or 2
  Json header;
  std::vector<Entry> entries;
  std::string whyForeign;  // why the file may not be this user's own work; "" when it is

  // The start-up line in the header. Throws as `fail` does.
  std::vector<std::string> program() const;
  // Throws std::invalid_argument "FILE:LINE: what is wrong".
  [[noreturn]] void fail(std::size_t line, const std::string& what) const;
};

// Throws std::invalid_argument "FILE:LINE: what is wrong" for a file that is not a whole session,
// and std::runtime_error when it cannot be read.
SessionLines readSessionLines(const std::filesystem::path& path);
// The same from text that is called `name` in what is thrown.
SessionLines readSessionLines(std::istream& file, std::string name);

// The first line, without its end.
std::string openingLine(const Json& header);

// "2025-01-31T12:00:00Z"
std::string utcNow();
// "2025-01-31 13:00:00", for a person.
std::string localNow();

// A session file while it is written: whole after every entry. Only this user can read it. Failures
// are std::runtime_errors.
class SessionLinesWriter {
 public:
  SessionLinesWriter(const std::filesystem::path& path, const Json& header);

  // The entry at that place, or behind the last; what stood there and behind it goes. Throws
  // std::out_of_range for a place further on.
  void put(std::size_t at, const Json& entry);
  std::size_t count() const { return starts_.size(); }

 private:
  void write(std::string text, off_t at);

  PrivateFile file_;
  std::vector<off_t> starts_;  // of the entries, with the comma before
  off_t end_ = 0;              // of the last of them: the closing brackets follow
  off_t size_ = 0;
};

}  // namespace tarni::host
