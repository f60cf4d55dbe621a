#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "host/cli/Invocation.h"
#include "host/cli/Listening.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Files.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/session/SessionFile.h"
#include "host/session/StartLine.h"

namespace tarni::host {

namespace {

struct RecordOptions {
  Listening listening;
  std::string file;
  std::string program;
};

Json argument(const Json& step, std::size_t index) {
  const auto arguments = step.value("arguments", Json::array());
  return arguments.is_array() && index < arguments.size() ? arguments[index] : Json::object();
}

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

// "ClickButton          UIButton "OK"  \UIView[0]\UIButton[1]"
void printStep(const Json& step) {
  const auto object = argument(step, 0);
  const auto data = textIn(argument(step, 1), "data");
  const auto action = printable(textIn(step, "action"));
  std::cout << padded(action.empty() ? "(element)" : action, 22) << " "
            << Terminal::strong(printable(textIn(object, "className")));
  const auto text = textIn(object, "sahiText");
  if (!text.empty()) std::cout << " " << inQuotes(text);
  if (!data.empty()) std::cout << " <- " << inQuotes(data);
  std::cout << "  " << Terminal::faint(printable(textIn(object, "xpath:position"))) << '\n';
}

// The program's start-up line: as a person gives it, else as the kernel knows it.
std::vector<std::string> startLine(const Invocation& invocation, const RecordOptions& options) {
  if (!options.program.empty()) return wordsOf(options.program);
  const auto program = invocation.program(invocation.recorderPort());
  return program ? startLineOf(*program) : std::vector<std::string>();
}

class Recording {
 public:
  // `program` is the start-up line to keep.
  Recording(const Invocation& invocation, const RecordOptions& options,
            const std::vector<std::string>& program)
      : json_(invocation.options.json) {
    if (!options.file.empty()) file_.emplace(options.file, program);
  }

  // How many steps the message holds that were recorded since this client came.
  int onMessage(const RecorderClient::Message& message) {
    const auto steps = objectsOf(message.text);
    if (json_) std::cout << printableJson(message.text) << '\n';
    if (!json_) print(message, steps);
    if (message.earlier) return 0;
    if (file_) keep(message.text, steps);
    return std::max(1, static_cast<int>(steps.size()));
  }

  std::size_t kept() const { return file_ ? file_->steps() : 0; }

 private:
  static void print(const RecorderClient::Message& message, const Json& steps) {
    const auto time = padded(message.earlier ? "earlier" : timeOfDay(), 12) + "  ";
    for (const auto& step : steps) {
      std::cout << Terminal::faint(time);
      printStep(step);
    }
    if (steps.empty()) std::cout << Terminal::faint(time) << inQuotes(message.text) << '\n';
  }

  // Text of a web page is kept as it is, so that nothing is lost, though it cannot be played.
  void keep(const std::string& text, const Json& steps) {
    const auto seconds = std::chrono::duration<double>(Clock::now() - start_).count();
    for (const auto& step : steps) file_->add(seconds, step);
    if (steps.empty()) file_->add(seconds, text);
  }

  Clock::time_point start_ = Clock::now();
  std::optional<SessionWriter> file_;
  bool json_;
};

void record(Invocation& invocation, const RecordOptions& options) {
  invocation.enterNetwork();
  // An earlier session stays until this one has begun.
  if (!options.file.empty()) requireWritable(options.file);
  const auto program = startLine(invocation, options);
  auto recorder = invocation.recorder();
  Recording recording(invocation, options, program);
  options.listening.run(recorder, invocation, {[&recording](const auto& message) {
                          return recording.onMessage(message);
                        }});
  if (!options.file.empty()) {
    std::cerr << "tarni: " << recording.kept() << " steps kept in " << options.file << '\n';
  }
}

}  // namespace

void declareRecord(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<RecordOptions>();
  options->listening.declare(parser, "steps");
  parser.add_option("-o,--output", options->file, "keep a session here, for `tarni play`")
      ->type_name("FILE");
  parser
      .add_option("--program", options->program,
                  "the start-up line to keep with the session, unless it is to be found out")
      ->type_name("LINE");
  parser.footer(
      "Runs until Ctrl-C. A program is recorded once: its recorder takes one client, and ends "
      "with\n"
      "the first playback command. What it had recorded last before this client came is printed "
      "as\n"
      "\"earlier\", not counted and not kept. With --json each line is a JSON array. FILE is whole "
      "after\n"
      "every step, whatever ends the recording. What is typed is kept as it was typed, passwords\n"
      "included.");
  parser.callback([options, &invocation] { record(invocation, *options); });
}

}  // namespace tarni::host
