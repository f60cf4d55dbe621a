// Commands of the recorder's host tool, one a line, with spied elements to highlight. The only
// thing that may come out is the exception of a "highlight" that names no element.
#include "agent/TcpCommunication/BaseManager/RecorderCommands.h"
#include "agent/elements/UIViewStorage.h"
#include "platform/Foundation/NSException.h"
#include "tests/fuzz/FuzzScreen.h"

using tarni::test::FuzzScreen;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto& screen = *[] {
    auto* const made = new FuzzScreen;
    for (const auto& view : made->views()) {
      tarni::UIViewStorage::sharedObject().registerView(view);
    }
    return made;
  }();
  for (const std::string& line : tarni::test::linesOf(data, size)) {
    try {
      tarni::test::complete(tarni::RecorderCommands::handle(line + "\r\n"));
    } catch (const tarni::platform::NSException& exception) {
      if (exception.name() != tarni::platform::NSRangeException) throw;
    }
  }
  screen.settle();
  return 0;
}
