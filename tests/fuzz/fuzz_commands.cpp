// Playback commands, one a line, on a screen with a view of every kind. Every one is answered with
// the text of a JSON array, whatever it is, and nothing thrown comes out.
#include <nlohmann/json.hpp>

#include "agent/TcpCommunication/PlaybackExecutor.h"
#include "agent/core/state/GlobalVars.h"
#include "tests/fuzz/FuzzScreen.h"

using tarni::test::FuzzScreen;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto& screen = *new FuzzScreen;
  tarni::GlobalVars::sharedInstance().set_currentWebView(size % 2 == 0 ? screen.views().back()
                                                                       : nullptr);
  for (const std::string& line : tarni::test::linesOf(data, size)) {
    screen.nameViews();
    const auto answer = tarni::test::complete(tarni::PlaybackExecutor::execute(line + "\r\n"));
    if (!answer) throw std::logic_error("a command with a line end is not answered");
    const auto entries = nlohmann::json::parse(*answer, nullptr, false);
    if (!entries.is_array()) throw std::logic_error("the answer is no array: " + *answer);
  }
  screen.settle();
  return 0;
}
