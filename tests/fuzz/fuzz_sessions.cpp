// Session files of the host tool: read, or refused with a reason; what was read can be told,
// reported on, edited, written as code, and written again as it was.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "host/export/Export.h"
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

void edit(Session session) {
  const std::size_t count = session.steps().size();
  std::string text = openingLine(session.header());
  for (const Step& step : session.steps()) {
    step.inWords();
    text += (&step == session.steps().data() ? "\n" : ",\n") + compact(step.json());
  }
  std::istringstream again(text.append(kSessionEnd));
  if (Session::fromLines(readSessionLines(again, "written")).steps() != session.steps()) {
    throw std::logic_error("what was written is not what was read");
  }
  for (const auto language : {ExportLanguage::Python, ExportLanguage::JavaScript}) {
    try {
      exportedTest(session, language, "session");
    } catch (const std::invalid_argument&) {
      // a step that says no way to its element
    }
  }
  for (std::size_t at = 0; at < count; ++at)
    session.take(session.steps()[session.steps().size() / 2]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
  try {
    const SessionLines lines = readSessionLines(text, "session");
    if (lines.version == 1) {
      report(StreamSession::fromLines(lines));
    } else {
      edit(Session::fromLines(lines));
    }
  } catch (const std::invalid_argument& refusal) {
    if (!std::string(refusal.what()).starts_with("session:")) throw;
  }
  return 0;
}
