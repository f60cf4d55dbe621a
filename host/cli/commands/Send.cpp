#include <CLI/CLI.hpp>
#include <iostream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

// JSON over several lines becomes one line; anything else goes as it stands, so that the agent's
// answers to what is not a command can be seen.
std::string asLine(const std::string& text) {
  if (text.find('\n') != std::string::npos) {
    const auto parsed = readJson(text);
    if (!parsed.is_discarded()) return parsed.dump();
  }
  auto end = text.size();
  while (end > 0 && (text[end - 1] == '\n' || text[end - 1] == '\r')) --end;
  auto line = text.substr(0, end);
  if (line.find("\r\n") != std::string::npos) {
    throw std::invalid_argument("a command is one line");
  }
  return line;
}

void send(Invocation& invocation, const std::string& json) {
  const auto text = json != "-" ? json : std::string(std::istreambuf_iterator<char>(std::cin), {});
  const auto answer = invocation.playback().exchange(asLine(text));
  std::cout << printableJson(answer) << '\n';
  const Answer failsOnException(answer);
}

}  // namespace

void declareSend(CLI::App& parser, Invocation& invocation) {
  const auto json = std::make_shared<std::string>();
  parser.add_option("JSON", *json, "the command; \"-\" reads it from standard input")
      ->required()
      ->option_text(" ");
  parser.callback([json, &invocation] { send(invocation, *json); });
}

}  // namespace tarni::host
