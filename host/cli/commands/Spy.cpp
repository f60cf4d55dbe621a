#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Listening.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

void printSummary(const Json& element) {
  std::cout << Terminal::strong(printable(textIn(element, "class")));
  const auto text = textIn(element, "sahiText");
  if (!text.empty()) std::cout << " " << inQuotes(text);
  for (const auto* key : {"id", "label"}) {
    const auto value = textIn(element, key);
    if (!value.empty() && value != text) std::cout << " " << key << "=" << inQuotes(value);
  }
  std::cout << " " << std::lround(numberOfText(element, "width")) << "x"
            << std::lround(numberOfText(element, "height"));
}

// Command lines that find the element again, ready to be copied.
void printLocators(const Json& element, const std::string& tool) {
  const auto name = textIn(element, "class");
  const auto text = textIn(element, "sahiText");
  const auto xpath = textIn(element, "xpath:position");
  const auto find = "     " + tool + " find " + quotedForShell(name);
  if (!text.empty()) std::cout << find << " --text " << quotedForShell(text) << '\n';
  if (!xpath.empty()) std::cout << find << " --xpath " << quotedForShell(xpath) << '\n';
}

// Elements of one touch: the one pointed at, then its ancestors outwards.
void print(const Json& elements, const std::string& tool) {
  std::cout << Terminal::faint(timeOfDay()) << '\n';
  for (std::size_t i = 0; i < elements.size(); ++i) {
    std::cout << (i < 10 ? "  " : " ") << i << "  ";
    printSummary(elements[i]);
    if (i == 0) {
      std::cout << '\n';
      printLocators(elements[i], tool);
    } else {
      std::cout << "  " << Terminal::faint(printable(textIn(elements[i], "xpath:position")))
                << '\n';
    }
  }
}

bool isSpied(const Json& element) {
  return element.contains("xpath:position") || element.contains("tagName");
}

class Spying {
 public:
  Spying(Invocation& invocation, RecorderClient& recorder)
      : recorder_(recorder), json_(invocation.options.json) {
    if (!invocation.options.in.empty()) tool_ += " --in " + invocation.options.in;
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
      std::cout << printableJson(message.text) << '\n';
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
    if (recorder_.highlight(spied_ - 1 - number)) return;
    std::cerr
        << "tarni: not shown: the program takes two numbers for each thing that is pointed at; "
           "point at one for more\n";
  }

 private:
  RecorderClient& recorder_;
  bool json_;
  std::string tool_ = "tarni";  // as a person has to call it
  int spied_ = 0;
};

void spy(Invocation& invocation, const Listening& listening) {
  auto recorder = invocation.recorder();
  Spying spying(invocation, recorder);
  listening.run(
      invocation,
      {messagesOf(recorder, [&spying](const auto& message) { return spying.onMessage(message); }),
       [&spying](const auto& line) { spying.onLine(line); }});
}

}  // namespace

void declareSpy(CLI::App& parser, Invocation& invocation) {
  const auto listening = std::make_shared<Listening>();
  listening->declare(parser, "elements");
  parser.footer(
      "Runs until Ctrl-C. While it runs, a touch does not reach the program: it highlights the\n"
      "element under the finger and prints it (0), its ancestors (1, 2, …) and how to find it.\n"
      "Typing one of the numbers highlights that element again, twice for each touch.");
  parser.callback([listening, &invocation] { spy(invocation, *listening); });
}

}  // namespace tarni::host
