#include "host/session/Session.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "host/guard/Files.h"

namespace tarni::host {

Session Session::recordedNow(std::vector<std::string> program, const Json& info) {
  Session session;
  session.program = std::move(program);
  session.toolkit = textIn(info, "toolkit");
  session.agent = textIn(info, "version");
  session.recorded = utcNow();
  return session;
}

Session Session::fromLines(const SessionLines& lines) {
  Session session;
  session.program = lines.program();
  session.toolkit = textIn(lines.header, "toolkit");
  session.agent = textIn(lines.header, "agent");
  session.recorded = textIn(lines.header, "recorded");
  for (const auto& [number, value] : lines.entries) {
    try {
      Step::refuseMisspelt(value);
      session.steps_.emplace_back(value);
    } catch (const std::invalid_argument& error) {
      lines.fail(number, error.what());
    }
  }
  return session;
}

Json Session::header() const {
  Json header = {{"tarniSession", kVersion}, {"program", program}};
  const auto add = [&header](const char* name, const std::string& value) {
    if (!value.empty()) header[name] = value;
  };
  add("toolkit", toolkit);
  add("agent", agent);
  add("recorded", recorded);
  return header;
}

void Session::save(const std::filesystem::path& path) const {
  std::string text = openingLine(header());
  for (const Step& step : steps_) {
    text += (&step == &steps_.front() ? "\n" : ",\n") + compact(step.json());
  }
  writePrivateFile(path, text.append(kSessionEnd));
}

void Session::insert(std::size_t at, Step step) {
  if (at > steps_.size()) throw std::out_of_range("the session has no such place");
  steps_.insert(steps_.begin() + static_cast<std::ptrdiff_t>(at), std::move(step));
}

void Session::remove(std::size_t at) {
  if (at >= steps_.size()) throw std::out_of_range("the session has no such place");
  steps_.erase(steps_.begin() + static_cast<std::ptrdiff_t>(at));
}

void Session::replace(std::size_t at, Step step) {
  steps_.at(at) = std::move(step);
}

std::size_t Session::take(Step told) {
  const auto isBefore = [&told](const Step& step) { return step.order() < told.order(); };
  // Checks have no number and stay where they were added.
  const auto isLater = [&told](const Step& step) {
    return step.order() != 0 && step.order() >= told.order();
  };
  const auto first = std::ranges::find_if_not(steps_, isBefore);
  const auto at = static_cast<std::size_t>(first - steps_.begin());
  steps_.erase(std::remove_if(first, steps_.end(), isLater), steps_.end());
  insert(at, std::move(told));
  return at;
}

}  // namespace tarni::host
