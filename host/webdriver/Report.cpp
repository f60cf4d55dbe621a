#include "host/webdriver/Report.h"

#include <iostream>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/guard/Files.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/player/Pictures.h"
#include "host/webdriver/Error.h"
#include "host/wire/WireError.h"

namespace tarni::host::webdriver {

namespace {

constexpr std::size_t kMostLines = 5'000;
constexpr std::size_t kMostPictures = 500;
constexpr std::size_t kLongestText = 80;
constexpr std::string_view kElementInPath = "{element}";

std::string shortened(std::string text) {
  if (text.size() <= kLongestText) return text;
  text.resize(kLongestText);
  text.resize(wholeCharacters(text));
  return text + "…";
}

// Empty for elements of pages, and for one that is gone.
Json describedElement(Session& session, const Command& command, const Arguments& arguments) {
  const bool isAbout = std::string_view(command.path).find(kElementInPath) != std::string::npos;
  if (!isAbout || session.page) return Json::object();
  try {
    return session.described(elementOf(arguments.path.front()));
  } catch (const Error&) {
    return Json::object();
  }
}

// What the path says beside the element: "attribute placeholder".
std::string nameOf(const Command& command, const Arguments& arguments) {
  std::string name = std::string_view(command.method) == "POST"  ? ""
                     : std::string_view(command.method) == "GET" ? "get"
                                                                 : "delete";
  std::string_view path = command.path;
  std::size_t variable = 0;
  while (!path.empty()) {
    path.remove_prefix(1);
    const auto word = path.substr(0, path.find('/'));
    path.remove_prefix(word.size());
    const bool isElement = word == "element" && path.starts_with("/{");
    const bool isVariable = word.starts_with('{');
    const auto& value = isVariable ? arguments.path.at(variable++) : std::string(word);
    if (isElement || word == kElementInPath) continue;
    addWord(name, value, " ");
  }
  return name == "get" ? "get capabilities" : name;
}

// What is typed into a field that does not show it is not shown here, either.
std::string bodyInWords(const Json& body, bool isSecret) {
  if (body.contains("using")) {
    return textIn(body, "using") + " " + inQuotes(shortened(textIn(body, "value")));
  }
  if (body.contains("text")) return isSecret ? "••••" : inQuotes(shortened(textIn(body, "text")));
  if (body.contains("script")) return inQuotes(shortened(textIn(body, "script")));
  return body.empty() ? "" : shortened(printable(compact(body)));
}

std::string commandInWords(const Command& command, const Arguments& arguments,
                           const Json& element) {
  auto words = nameOf(command, arguments);
  if (!element.empty()) words += " " + elementInWords(element, element.value("editable", false));
  const auto body = bodyInWords(arguments.body, element.value("secure", false));
  return body.empty() ? words : words + " " + body;
}

// Whether a client that waits for something asks so, and is told that it is not there yet.
bool isAnswer(const Command& command, const Error& error) {
  const bool looksForElement = std::string_view(command.path).ends_with("/element");
  return (looksForElement && error.name() == "no such element") || error.name() == "no such alert";
}

}  // namespace

Report::Report(std::filesystem::path file, PlayReport head)
    : file_(std::move(file)), head_(std::move(head)) {
  makePrivateFolder(file_.parent_path());
}

Report::~Report() {
  try {
    write();
  } catch (const std::exception& error) {
    std::cerr << "tarni: the report was not written: " << printable(error.what()) << '\n';
  }
}

Json Report::run(Session& session, const Command& command, const Arguments& arguments,
                 Handler handler) {
  costs_ = {};
  hasActed_ = false;
  Line line;
  auto& played = line.played;
  played.began = secondsSince(start_);
  played.element = describedElement(session, command, arguments);
  line.words = commandInWords(command, arguments, played.element);
  const auto start = Clock::now();
  const auto came = [&](PlayResult result, const char* message) {
    played.result = result;
    played.message = message;
    played.seconds = secondsSince(start);
    played.costs = costs_;
    note(session, std::move(line));
  };
  try {
    Json value = handler(session, arguments);
    came(PlayResult::Passed, "");
    return value;
  } catch (const WireError& error) {
    came(PlayResult::Lost, error.what());
    throw;
  } catch (const Error& error) {
    came(isAnswer(command, error) ? PlayResult::Passed : PlayResult::Failed, error.what());
    throw;
  } catch (const std::exception& error) {
    came(PlayResult::Failed, error.what());
    throw;
  }
}

void Report::addAnswer(const Json& answer) {
  if (!answer.contains("costs")) return;
  costs_.add(answer);
  hasActed_ = true;
}

void Report::note(Session& session, Line line) {
  if (!hasActed_ && !lines_.empty() && line.words == lines_.back().words) {
    auto& known = lines_.back().played;
    const double until = line.played.began + line.played.seconds;
    line.played.began = known.began;
    line.played.seconds = until - known.began;
    lines_.back() = std::move(line);
    return;
  }
  if (lines_.size() >= kMostLines) {
    ++leftOut_;
    return;
  }
  if (hasActed_ || line.played.hasFailed()) show(session, line.played);
  line.played.number = lines_.size() + 1;
  lines_.push_back(std::move(line));
}

// The picture after one command is the one before the next.
void Report::show(Session& session, Played& played) {
  if (played.result == PlayResult::Lost || pictures_ >= kMostPictures) return;
  try {
    auto& client = session.program().client();
    comesToRest(client);
    played.before = std::move(last_);
    played.after = pictureOfWindow(client, played.element.value("element", Json(nullptr)));
    last_ = played.after;
    ++pictures_;
  } catch (const WireError&) {
    // It may have ended by that; the next command says so.
  }
}

void Report::write() const {
  std::vector<PlayReport::Shown> shown;
  for (const auto& [words, played] : lines_) {
    shown.push_back({words, played.element, Json::object(), &played});
  }
  auto page = head_;
  if (leftOut_ > 0) {
    page.warnings.push_back(std::to_string(leftOut_) + " more commands are not shown");
  }
  writePrivateFile(file_, page.page(shown, addressWithin));
}

}  // namespace tarni::host::webdriver
