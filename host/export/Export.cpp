#include "host/export/Export.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "host/export/TestLanguage.h"

namespace tarni::host {

namespace {

constexpr NamedKey kNamedKeys[] = {
    {"Control", "CONTROL", "Control"},
    {"Shift", "SHIFT", "Shift"},
    {"Alt", "ALT", "Alt"},
    {"Meta", "META", "Command"},
    {"Enter", "ENTER", "Enter"},
    {"Tab", "TAB", "Tab"},
    {"Escape", "ESCAPE", "Escape"},
    {"Backspace", "BACKSPACE", "Backspace"},
    {"Delete", "DELETE", "Delete"},
    {"Insert", "INSERT", "Insert"},
    {"Home", "HOME", "Home"},
    {"End", "END", "End"},
    {"PageUp", "PAGE_UP", "PageUp"},
    {"PageDown", "PAGE_DOWN", "PageDown"},
    {"ArrowLeft", "ARROW_LEFT", "ArrowLeft"},
    {"ArrowRight", "ARROW_RIGHT", "ArrowRight"},
    {"ArrowUp", "ARROW_UP", "ArrowUp"},
    {"ArrowDown", "ARROW_DOWN", "ArrowDown"},
    {"Space", "SPACE", "Space"},
    {"Pause", "PAUSE", "Pause"},
    {"Help", "HELP", "Help"},
    {"F1", "F1", "F1"},
    {"F2", "F2", "F2"},
    {"F3", "F3", "F3"},
    {"F4", "F4", "F4"},
    {"F5", "F5", "F5"},
    {"F6", "F6", "F6"},
    {"F7", "F7", "F7"},
    {"F8", "F8", "F8"},
    {"F9", "F9", "F9"},
    {"F10", "F10", "F10"},
    {"F11", "F11", "F11"},
    {"F12", "F12", "F12"},
};

const TestLanguage& testsIn(ExportLanguage language) {
  return language == ExportLanguage::Python ? pythonTests() : javaScriptTests();
}

// After the last step the program may be gone, and with it the session.
bool mayEndProgram(const Step& step) {
  constexpr std::string_view kActs[] = {"click", "key", "menu", "close"};
  return std::ranges::find(kActs, step.act()) != std::end(kActs);
}

std::string stepsOf(const Session& session, const TestLanguage& language) {
  std::string text;
  for (const Step& step : session.steps()) {
    std::vector<std::string> statements;
    for (const ExportedAct& act : exportedActs(step)) {
      std::ranges::move(language.statements(act), std::back_inserter(statements));
    }
    const bool isLast = &step == &session.steps().back();
    text += language.step(step.inWords(), statements, isLast && mayEndProgram(step));
  }
  return text;
}

// Those that are called, by one another as well, in their order.
std::string helpersFor(const std::string& steps, const TestLanguage& language) {
  std::string text;
  const auto all = language.helpers();
  for (auto helper = all.rbegin(); helper != all.rend(); ++helper) {
    const auto call = std::string(helper->name) + "(";
    const bool isCalled =
        steps.find(call) != std::string::npos || text.find(call) != std::string::npos;
    if (isCalled) text.insert(0, helper->code);
  }
  return text;
}

}  // namespace

std::string exportedTest(const Session& session, ExportLanguage language, const std::string& name) {
  const TestLanguage& tests = testsIn(language);
  const auto steps = stepsOf(session, tests);
  const auto body = helpersFor(steps, tests) + tests.test(name, steps);
  return tests.opening(session, name, body) + body;
}

std::string quoted(const std::string& text) {
  return compact(Json(text));
}

std::string programOf(const Session& session) {
  return session.program.empty() ? "PROGRAM" : session.program.front();
}

Json argumentsOf(const Session& session) {
  Json arguments = session.program;
  if (!arguments.empty()) arguments.erase(0);
  return arguments;
}

const NamedKey* namedKey(std::string_view key) {
  const auto* const found = std::ranges::find(kNamedKeys, key, &NamedKey::key);
  return found != std::end(kNamedKeys) ? found : nullptr;
}

}  // namespace tarni::host
