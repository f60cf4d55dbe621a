#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "host/session/SessionFile.h"

namespace tarni::host {

namespace {

constexpr int kVersion = 1;
constexpr auto kCutShort = "the file is cut short here";

// Lines of a file with their numbers, blank ones left out; errors name the line last read.
class Lines {
 public:
  // `name` is what errors call the file.
  Lines(std::istream& file, std::string name) : file_(file), name_(std::move(name)) {}

  bool next(std::string& line) {
    while (std::getline(file_, line)) {
      ++number_;
      line.erase(line.find_last_not_of(" \t\r") + 1);
      if (!line.empty()) return true;
    }
    return false;
  }
  std::size_t number() const { return number_; }
  // True when the line last read has no end.
  bool isTorn() const { return file_.eof(); }

  // Of the line last read. Discarded when it is not JSON.
  Json parsed(const std::string& line) const {
    try {
      return readJson(line);
    } catch (const JsonTooLarge& error) {
      fail(error.what());
    }
  }

  [[noreturn]] void fail(const std::string& what) const {
    throw std::invalid_argument(name_ + ":" + std::to_string(number_) + ": " + what);
  }

 private:
  std::istream& file_;
  const std::string name_;
  std::size_t number_ = 0;
};

void readHeader(Lines& lines, RecordedSession& session) {
  std::string line;
  if (!lines.next(line)) lines.fail("the file is empty");
  const auto header = lines.parsed(line + "]}");
  if (!header.is_object() || !header.contains("tarniSession")) {
    lines.fail("this is no session file: it does not begin with {\"tarniSession\":1,…\"steps\":[");
  }
  if (header["tarniSession"] != kVersion) {
    lines.fail("the file is of another version, " + header["tarniSession"].dump());
  }
  const auto program = header.value("program", Json::array());
  if (!program.is_array()) lines.fail("\"program\" is no array of words");
  for (const auto& word : program) {
    if (!word.is_string()) lines.fail("\"program\" is no array of words");
    session.program.push_back(word);
  }
  session.recorded = textIn(header, "recorded");
}

RecordedStep stepOf(const Lines& lines, const std::string& line) {
  const auto entry = lines.parsed(line);
  if (entry.is_discarded()) {
    lines.fail(lines.isTorn() ? kCutShort : "this is no JSON; a step is one object on one line");
  }
  if (!entry.is_object() || !entry.contains("step")) lines.fail("there is no \"step\" here");
  if (entry["step"].is_string()) {
    lines.fail("this came from a web page as text, which cannot be played");
  }
  try {
    auto step = RecordedStep::fromJson(entry["step"]);
    const auto time = entry.find("time");
    if (time != entry.end() && time->is_number()) step.seconds = *time;
    return step;
  } catch (const std::invalid_argument& error) {
    lines.fail(error.what());
  }
}

}  // namespace

RecordedSession readSession(const std::filesystem::path& path) {
  auto [text, whyForeign] = readFile(path);
  std::istringstream file(std::move(text));
  auto session = readSession(file, path.string());
  session.whyForeign = std::move(whyForeign);
  return session;
}

RecordedSession readSession(std::istream& file, const std::string& name) {
  Lines lines(file, name);
  RecordedSession session;
  readHeader(lines, session);
  bool more = true;  // the line before ended with a comma, or is the header
  std::string line;
  while (lines.next(line)) {
    if (line == "]}") {
      if (more && !session.steps.empty()) lines.fail("a step is missing behind the comma");
      if (lines.next(line)) lines.fail("there is more behind the session's end");
      return session;
    }
    if (!more) lines.fail("the comma behind the step before is missing");
    more = line.back() == ',';
    if (more) line.pop_back();
    session.steps.push_back(stepOf(lines, line));
    session.steps.back().line = lines.number();
    session.steps.back().number = session.steps.size();
  }
  lines.fail(kCutShort);
}

}  // namespace tarni::host
