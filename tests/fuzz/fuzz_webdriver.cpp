// What clients of WebDriver send, one body a line: capabilities, time-outs, actions, text to type,
// and what to look for, which is looked for in a small tree. It is read, or refused with an error.
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <variant>

#include "host/source/Css.h"
#include "host/source/SourceTree.h"
#include "host/webdriver/ActionSequence.h"
#include "host/webdriver/Capabilities.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Finding.h"
#include "host/webdriver/Keys.h"
#include "tests/fuzz/Lines.h"

namespace tarni::test {
namespace {

using namespace host;             // NOLINT(google-build-using-namespace): one file, one subject
using namespace host::webdriver;  // NOLINT(google-build-using-namespace)

const SourceTree& tree() {
  static const auto& made = *new SourceTree(readJson(R"([
    {"element":1,"class":"UIWindow","title":"Sample","rect":{"x":0,"y":0,"width":300,"height":200}},
    {"element":2,"parent":1,"class":"UITableView","identifier":"list","visible":true,"rows":2},
    {"element":3,"parent":2,"class":"UITableViewCell","text":"Row 1","row":0,"selected":false},
    {"element":4,"parent":2,"class":"UITableViewCell","text":"Row 2","row":1,"selected":true},
    {"element":5,"parent":1,"class":"UIButton","text":"Log in","label":"Log \"in\" 'now'","enabled":true},
    {"element":6,"parent":1,"class":"My::Field<int>","text":"Ada","placeholder":"User name","value":"5"}])"));
  return made;
}

void find(const std::string& strategy, const std::string& value) {
  const Query query = queryFor(strategy, value, false);
  if (const auto* const search = std::get_if<TreeSearch>(&query)) {
    for (const std::optional<long> within : {std::optional<long>(), std::optional<long>(2)}) {
      for (const long handle : (*search)(tree(), within)) {
        if (!tree().node(handle)) throw std::logic_error("an element that is none: " + value);
      }
    }
  }
}

// A selector that was read is one of XPath.
void translate(const std::string& css) {
  const Css read = Css::parse(css);
  try {
    tree().find(read.xpath);
  } catch (const InvalidSelector& error) {
    throw std::logic_error(css + " became " + read.xpath + ": " + error.what());
  }
}

void readBody(const Json& body) {
  if (!body.is_object()) return;
  if (body.contains("capabilities")) Capabilities::match(body).written.dump();
  if (body.contains("actions")) readActions(body["actions"]);
  if (body.contains("using")) find(textIn(body, "using"), textIn(body, "value"));
  if (body.contains("css")) translate(textIn(body, "css"));
  if (body.contains("text")) stepsTyping(textIn(body, "text")).dump();
  Timeouts timeouts;
  timeouts.take(body);
  timeouts.written().dump();
}

}  // namespace
}  // namespace tarni::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (const std::string& line : tarni::test::linesOf(data, size)) {
    try {
      tarni::test::readBody(tarni::host::readJson(line));
    } catch (const tarni::host::webdriver::Error&) {
    } catch (const tarni::host::InvalidSelector&) {
    } catch (const tarni::host::JsonTooLarge&) {
    }
  }
  return 0;
}
