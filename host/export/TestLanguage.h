// TestLanguage: what the exported tests of two languages differ in. Used by Export.cpp alone.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/export/ExportedAct.h"
#include "host/session/Session.h"

namespace tarni::host {

class TestLanguage {
 public:
  // A function that the tests call, for what their client has no word for.
  struct Helper {
    std::string_view name;
    std::string_view code;
  };

  virtual ~TestLanguage() = default;

  // Statements that carry it out, without indentation.
  virtual std::vector<std::string> statements(const ExportedAct& act) const = 0;
  virtual std::span<const Helper> helpers() const = 0;
  // All before the helpers; `body` is what stands behind, for what it needs.
  virtual std::string opening(const Session& session, const std::string& name,
                              const std::string& body) const = 0;
  // The test with its steps.
  virtual std::string test(const std::string& name, const std::string& steps) const = 0;
  // `isLast` for the one that may end the program.
  virtual std::string step(const std::string& words, const std::vector<std::string>& statements,
                           bool isLast) const = 0;
};

const TestLanguage& pythonTests();
const TestLanguage& javaScriptTests();

// A literal of either language.
std::string quoted(const std::string& text);
// What is started, and with which further words.
std::string programOf(const Session& session);
Json argumentsOf(const Session& session);
// "Control", "ArrowDown": null for what is a character.
struct NamedKey {
  std::string_view key;
  std::string_view inPython;
  std::string_view inJavaScript;
};
const NamedKey* namedKey(std::string_view key);

}  // namespace tarni::host
