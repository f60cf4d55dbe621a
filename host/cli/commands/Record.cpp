#include <CLI/CLI.hpp>
#include <fstream>
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

struct RecordOptions {
  Listening listening;
  std::string file;
};

ordered_json argument(const ordered_json& step, std::size_t index) {
  const auto arguments = step.value("arguments", ordered_json::array());
  return arguments.is_array() && index < arguments.size() ? arguments[index]
                                                          : ordered_json::object();
}

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

// "12:03:11.250  ClickButton          UIButton "OK"  \UIView[0]\UIButton[1]"
std::string readable(const ordered_json& step) {
  const auto object = argument(step, 0);
  const auto data = textAt(argument(step, 1), "data");
  const auto action = textAt(step, "action");
  std::string line = padded(action.empty() ? "(element)" : action, 22) + " ";
  line += Terminal::strong(textAt(object, "className"));
  const auto text = textAt(object, "sahiText");
  if (!text.empty()) line += " " + Terminal::quoted(text);
  if (!data.empty()) line += " <- " + Terminal::quoted(data);
  return line + "  " + Terminal::faint(textAt(object, "xpath:position"));
}

int print(const RecorderClient::Message& message, bool json, std::ofstream& file) {
  if (file.is_open()) file << message.text << std::endl;
  if (json) std::cout << message.text << '\n';
  const auto steps = objectsOf(message.text);
  if (!json) {
    const auto time = padded(message.earlier ? "earlier" : timeOfDay(), 12) + "  ";
    for (const auto& step : steps) std::cout << Terminal::faint(time) << readable(step) << '\n';
    if (steps.empty()) std::cout << Terminal::faint(time) << Terminal::quoted(message.text) << '\n';
  }
  return message.earlier ? 0 : std::max(1, static_cast<int>(steps.size()));
}

void record(Session& session, const RecordOptions& options) {
  std::ofstream file;
  if (!options.file.empty()) {
    file.open(options.file);
    if (!file) throw std::runtime_error("cannot write " + options.file);
  }
  auto recorder = session.recorder();
  const bool json = session.options.json;
  const auto onMessage = [json, &file](const RecorderClient::Message& message) {
    return print(message, json, file);
  };
  options.listening.run(recorder, session, {onMessage});
  if (file.is_open() && !file) throw std::runtime_error("cannot write " + options.file);
}

}  // namespace

void declareRecord(CLI::App& parser, Session& session) {
  const auto options = std::make_shared<RecordOptions>();
  options->listening.declare(parser, "steps");
  parser.add_option("-o,--output", options->file, "keep the steps here as well, as they came")
      ->type_name("FILE");
  parser.footer(
      "Runs until Ctrl-C. A program is recorded once: its recorder takes one client, and ends "
      "with\n"
      "the first playback command. What it had recorded last before this client came is printed "
      "as\n"
      "\"earlier\" and not counted. With --json and in FILE each line is a JSON array.");
  parser.callback([options, &session] { record(session, *options); });
}

}  // namespace tarni::host
