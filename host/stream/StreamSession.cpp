#include "host/stream/StreamSession.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace tarni::host {

namespace {

constexpr int kStreamVersion = 1;

StreamStep stepOf(const SessionLines& lines, const SessionLines::Entry& entry) {
  const auto& [number, value] = entry;
  if (!value.is_object() || !value.contains("step"))
    lines.fail(number, "there is no \"step\" here");
  if (value["step"].is_string()) {
    lines.fail(number, "this came from a web page as text, which cannot be played");
  }
  try {
    auto step = StreamStep::fromJson(value["step"]);
    const auto time = value.find("time");
    if (time != value.end() && time->is_number()) step.seconds = *time;
    return step;
  } catch (const std::invalid_argument& error) {
    lines.fail(number, error.what());
  }
}

}  // namespace

StreamSession StreamSession::fromLines(const SessionLines& lines) {
  if (lines.version != kStreamVersion) lines.fail(1, "this is no session of the fixed stream");
  StreamSession session;
  session.program = lines.program();
  session.recorded = textIn(lines.header, "recorded");
  session.whyForeign = lines.whyForeign;
  for (const auto& entry : lines.entries) {
    session.steps.push_back(stepOf(lines, entry));
    session.steps.back().line = entry.number;
    session.steps.back().number = session.steps.size();
  }
  return session;
}

StreamSession readStreamSession(const std::filesystem::path& path) {
  return StreamSession::fromLines(readSessionLines(path));
}

StreamSession readStreamSession(std::istream& file, const std::string& name) {
  return StreamSession::fromLines(readSessionLines(file, name));
}

StreamSessionWriter::StreamSessionWriter(const std::filesystem::path& path,
                                         const std::vector<std::string>& program)
    : lines_(path,
             {{"tarniSession", kStreamVersion}, {"program", program}, {"recorded", utcNow()}}) {}

void StreamSessionWriter::add(double seconds, const Json& step) {
  constexpr double kMilliseconds = 1000;
  const double time = std::round(seconds * kMilliseconds) / kMilliseconds;
  lines_.put(lines_.count(), {{"time", time}, {"step", step}});
}

}  // namespace tarni::host
