#include "host/session/SessionLines.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace tarni::host {

namespace {

constexpr auto kCutShort = "the file is cut short here";

class LineReader {
 public:
  LineReader(std::istream& file, SessionLines& lines) : file_(file), lines_(lines) {}

  void read() {
    readHeader();
    bool more = true;  // the line before ended with a comma, or is the header
    while (next()) {
      if (line_ == "]}") return end(more);
      if (!more) fail("the comma behind the step before is missing");
      more = line_.back() == ',';
      if (more) line_.pop_back();
      Json value = parsed(line_);
      if (value.is_discarded()) {
        fail(file_.eof() ? kCutShort : "this is no JSON; a step is one object on one line");
      }
      lines_.entries.push_back({number_, std::move(value)});
    }
    fail(kCutShort);
  }

 private:
  // Blank lines are left out.
  bool next() {
    while (std::getline(file_, line_)) {
      ++number_;
      line_.erase(line_.find_last_not_of(" \t\r") + 1);
      if (!line_.empty()) return true;
    }
    return false;
  }

  void readHeader() {
    if (!next()) fail("the file is empty");
    lines_.header = parsed(line_ + "]}");
    const Json& header = lines_.header;
    if (!header.is_object() || !header.contains("tarniSession")) {
      fail("this is no session file: it does not begin with {\"tarniSession\":2,…\"steps\":[");
    }
    const Json& version = header["tarniSession"];
    if (version != 1 && version != 2) {
      fail("the file is of another version, " + compact(version) + "; this tool reads 1 and 2");
    }
    lines_.version = version;
  }

  void end(bool more) {
    if (more && !lines_.entries.empty()) fail("a step is missing behind the comma");
    if (next()) fail("there is more behind the session's end");
  }

  // Discarded when it is not JSON.
  Json parsed(const std::string& text) const {
    try {
      return readJson(text);
    } catch (const JsonTooLarge& error) {
      fail(error.what());
    }
  }

  [[noreturn]] void fail(const std::string& what) const { lines_.fail(number_, what); }

  std::istream& file_;
  SessionLines& lines_;
  std::string line_;
  std::size_t number_ = 0;
};

std::string timeAs(const char* format, const std::tm& time) {
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), format, &time);
  return text.data();
}

}  // namespace

std::vector<std::string> SessionLines::program() const {
  std::vector<std::string> words;
  const auto found = header.find("program");
  if (found == header.end()) return words;
  const auto isText = [](const Json& word) { return word.is_string(); };
  if (!found->is_array() || !std::ranges::all_of(*found, isText)) {
    fail(1, "\"program\" is no array of words");
  }
  for (const Json& word : *found) words.push_back(word);
  return words;
}

void SessionLines::fail(std::size_t line, const std::string& what) const {
  throw std::invalid_argument(name + ":" + std::to_string(line) + ": " + what);
}

SessionLines readSessionLines(const std::filesystem::path& path) {
  auto [text, whyForeign] = readFile(path);
  std::istringstream file(std::move(text));
  auto lines = readSessionLines(file, path.string());
  lines.whyForeign = std::move(whyForeign);
  return lines;
}

SessionLines readSessionLines(std::istream& file, std::string name) {
  SessionLines lines;
  lines.name = std::move(name);
  LineReader(file, lines).read();
  return lines;
}

std::string openingLine(const Json& header) {
  auto opening = compact(header);
  opening.pop_back();
  return opening + ",\"steps\":[";
}

std::string utcNow() {
  const auto now = std::time(nullptr);
  std::tm parts{};
  return timeAs("%Y-%m-%dT%H:%M:%SZ", *gmtime_r(&now, &parts));
}

std::string localNow() {
  const auto now = std::time(nullptr);
  std::tm parts{};
  return timeAs("%Y-%m-%d %H:%M:%S", *localtime_r(&now, &parts));
}

SessionLinesWriter::SessionLinesWriter(const std::filesystem::path& path, const Json& header)
    : file_(path) {
  write(openingLine(header), 0);
  file_.keep();
}

void SessionLinesWriter::put(std::size_t at, const Json& entry) {
  if (at > starts_.size()) throw std::out_of_range("a step of the file is left out");
  const off_t start = at < starts_.size() ? starts_[at] : end_;
  starts_.resize(at);
  write((at == 0 ? "\n" : ",\n") + compact(entry), start);
  starts_.push_back(start);
}

// The closing brackets follow each time and are written over by the next entry. Of what was longer
// before, blank lines are left: the file is whole in one go.
void SessionLinesWriter::write(std::string text, off_t at) {
  end_ = at + static_cast<off_t>(text.size());
  text += kSessionEnd;
  const off_t end = at + static_cast<off_t>(text.size());
  if (end < size_) text.append(static_cast<std::size_t>(size_ - end), '\n');
  size_ = std::max(size_, end);
  file_.write(text, at);
}

}  // namespace tarni::host
