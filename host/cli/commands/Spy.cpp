#include <CLI/CLI.hpp>
#include <charconv>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Listening.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"

namespace tarni::host {

using nlohmann::ordered_json;

namespace {

std::string shellQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string summary(const ordered_json& element) {
  std::string line = Terminal::strong(textAt(element, "class"));
  const auto text = textAt(element, "sahiText");
  if (!text.empty()) line += " " + Terminal::quoted(text);
  for (const auto* key : {"id", "label"}) {
    const auto value = textAt(element, key);
    if (!value.empty() && value != text)
      line += std::string(" ") + key + "=" + Terminal::quoted(value);
  }
  return line + " " + textAt(element, "width") + "x" + textAt(element, "height");
}

// Command lines that find the element again, ready to be copied.
void printLocators(const ordered_json& element, const std::string& tool) {
  const auto name = textAt(element, "class");
  const auto text = textAt(element, "sahiText");
  const auto xpath = textAt(element, "xpath:position");
  const auto find = "     " + tool + " find " + shellQuoted(name);
  if (!text.empty()) std::cout << find << " --text " << shellQuoted(text) << '\n';
  if (!xpath.empty()) std::cout << find << " --xpath " << shellQuoted(xpath) << '\n';
}

// Elements of one touch: the one pointed at, then its ancestors outwards.
void print(const ordered_json& elements, const std::string& tool) {
  std::cout << Terminal::faint(timeOfDay()) << '\n';
  for (std::size_t i = 0; i < elements.size(); ++i) {
    std::cout << (i < 10 ? "  " : " ") << i << "  " << summary(elements[i]);
    if (i == 0) {
      std::cout << '\n';
      printLocators(elements[i], tool);
    } else {
      std::cout << "  " << Terminal::faint(textAt(elements[i], "xpath:position")) << '\n';
    }
  }
}

bool isSpied(const ordered_json& element) {
  return element.contains("xpath:position") || element.contains("tagName");
}

class Spying {
 public:
  Spying(Session& session, RecorderClient& recorder)
      : recorder_(recorder), json_(session.options.json) {
    if (!session.options.in.empty()) tool_ += " --in " + session.options.in;
    recorder_.startObjectSpy();
  }
  Spying(const Spying&) = delete;
  Spying& operator=(const Spying&) = delete;
  ~Spying() {
    try {
      recorder_.stopObjectSpy();
    } catch (const std::exception&) {  // the program has gone, and its spy mode with it
    }
  }

  int onMessage(const RecorderClient::Message& message) {
    const auto elements = objectsOf(message.text);
    if (elements.empty() || !isSpied(elements.front())) return 0;
    if (json_) {
      std::cout << message.text << '\n';
    } else {
      print(elements, tool_);
    }
    if (message.earlier) return 0;
    spied_ = static_cast<int>(elements.size());
    return 1;
  }

  // The agent counts from the one spied last, which is the outermost.
  void onLine(const std::string& line) {
    int number = -1;
    const auto result = std::from_chars(line.data(), line.data() + line.size(), number);
    if (result.ec != std::errc{} || number < 0 || number >= spied_) {
      std::cerr << "tarni: a number that stands before an element above highlights it\n";
      return;
    }
    recorder_.highlight(spied_ - 1 - number);
  }

 private:
  RecorderClient& recorder_;
  bool json_;
  std::string tool_ = "tarni";  // as a person has to call it
  int spied_ = 0;
};

void spy(Session& session, const Listening& listening) {
  auto recorder = session.recorder();
  Spying spying(session, recorder);
  listening.run(recorder, session,
                {[&spying](const auto& message) { return spying.onMessage(message); },
                 [&spying](const auto& line) { spying.onLine(line); }});
}

}  // namespace

void declareSpy(CLI::App& parser, Session& session) {
  const auto listening = std::make_shared<Listening>();
  listening->declare(parser, "elements");
  parser.footer(
      "Runs until Ctrl-C. While it runs, a touch does not reach the program: it highlights the\n"
      "element under the finger and prints it (0), its ancestors (1, 2, …) and how to find it.\n"
      "Typing one of the numbers highlights that element again.");
  parser.callback([listening, &session] { spy(session, *listening); });
}

}  // namespace tarni::host
