// What a program sends to the host tool, byte by byte: cut into messages, read as an answer, told
// to a person. It is refused with a reason, or what is told steers no terminal and is no longer
// than what came allows.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "host/guard/Printable.h"
#include "host/stream/ElementSearch.h"
#include "host/stream/PortTree.h"
#include "host/wire/Answer.h"
#include "host/wire/FrameReader.h"
#include "host/wire/WireError.h"

namespace {

using namespace tarni::host;  // NOLINT(google-build-using-namespace): one file, one subject

void require(bool holds, const char* what) {
  if (!holds) throw std::logic_error(what);
}

bool isControl(unsigned char byte) {
  return byte < 0x20 || byte == 0x7F;
}

void requireHarmless(const std::string& line) {
  require(std::ranges::none_of(line, isControl), "a control character is left");
  for (const char* hidden : {"\u009B", "\u0085", "\u202E", "\u2067", "\u2028"}) {
    require(line.find(hidden) == std::string::npos, "what steers a terminal is left");
  }
  require(printable(line) == line, "what is printable does not stay as it is");
}

void tell(const std::string& message) {
  const Answer answer(message);
  answer.output();
  PortTree tree;
  for (const auto& entry : answer.entries()) {
    tree.goTo(entry);
    requireHarmless(tree.indentation() + tree.position());
    requireHarmless(ElementOnScreen::fromJson(entry).description());
  }
  const auto shown = printableJson(message);
  requireHarmless(shown);
  const auto parsed = readJson(message);
  require(parsed.is_discarded() || parsed == readJson(shown), "JSON changed its meaning");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  requireHarmless(printable(bytes));
  requireHarmless(quotedForShell(bytes));
  requireHarmless(inQuotes(bytes));
  require(readJson(inQuotes(bytes)).is_string(), "quotes make no text of JSON");
  try {
    FrameReader reader;
    reader.append(bytes.substr(0, size / 2));
    if (const auto message = reader.next()) tell(*message);
    reader.append(bytes.substr(size / 2));
    while (const auto message = reader.next()) tell(*message);
  } catch (const WireError&) {
  } catch (const AgentException&) {
  }
  try {
    tell(bytes);
  } catch (const WireError&) {
  } catch (const AgentException&) {
  }
  return 0;
}
