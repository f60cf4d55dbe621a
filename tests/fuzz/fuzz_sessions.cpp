// Session files of the host tool: read, or refused with a reason; what was read can be told and
// reported on.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "host/session/Session.h"
#include "host/stream/Jpeg.h"
#include "host/stream/StreamReport.h"
#include "host/stream/StreamSession.h"

namespace {

using namespace tarni::host;  // NOLINT(google-build-using-namespace): one file, one subject

void report(StreamSession session) {
  PlayedStream played;
  played.recorded = session.recorded;
  for (const std::string& word : session.program) played.program += word + ' ';
  for (StreamStep& step : session.steps) {
    jpegSize(step.picture);
    PlayedStreamStep shown;
    shown.step = std::move(step);
    shown.message = shown.step.deed() + shown.step.element();
    played.steps.push_back(std::move(shown));
  }
  if (streamReportPage(played).empty()) throw std::logic_error("the report is empty");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
  try {
    const SessionLines lines = readSessionLines(text, "session");
    if (lines.version == 1) {
      report(StreamSession::fromLines(lines));
    } else {
      for (const Step& step : Session::fromLines(lines).steps()) step.inWords();
    }
  } catch (const std::invalid_argument& refusal) {
    if (!std::string(refusal.what()).starts_with("session:")) throw;
  }
  return 0;
}
