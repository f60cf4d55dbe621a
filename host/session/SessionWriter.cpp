#include <array>
#include <cmath>
#include <ctime>
#include <nlohmann/json.hpp>

#include "host/session/SessionFile.h"

namespace tarni::host {

namespace {

constexpr auto kEnd = "\n]}\n";

std::string utcNow() {
  const auto now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text.data();
}

}  // namespace

SessionWriter::SessionWriter(const std::filesystem::path& path,
                             const std::vector<std::string>& program)
    : file_(path) {
  const Json header = {{"tarniSession", 1}, {"program", program}, {"recorded", utcNow()}};
  auto opening = compact(header);
  opening.pop_back();
  append(opening + ",\"steps\":[");
  file_.keep();
}

void SessionWriter::add(double seconds, const Json& step) {
  constexpr double kMilliseconds = 1000;
  const Json entry = {{"time", std::round(seconds * kMilliseconds) / kMilliseconds},
                      {"step", step}};
  append((steps_ == 0 ? "\n" : ",\n") + compact(entry));
  ++steps_;
}

// The closing brackets follow each time and are written over by the next step.
void SessionWriter::append(std::string text) {
  const auto end = end_ + static_cast<long>(text.size());
  text += kEnd;
  file_.write(text, end_);
  end_ = end;
}

}  // namespace tarni::host
