#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Locator.h"
#include "host/cli/SafeOutput.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

// As it is for a program, which may compare it.
void print(const std::string& value) {
  if (isatty(STDOUT_FILENO) == 1) {
    std::cout << value;
  } else {
    SafeOutput::writeRaw(std::cout, value);
  }
  std::cout << '\n';
}

void ask(Session& session, const Target& target, const char* function) {
  const auto id = target.resolve(session);
  const auto answer = session.call({function, "", "", id});
  const auto output = answer.output();
  if (session.options.json) {
    std::cout << printableJson(answer.text()) << '\n';
  } else if (output) {
    print(*output);
  }
  if (!output) {
    throw NotFound(std::string(function) == "isselected" ? "the element is no switch"
                                                         : "the element has no answer to this");
  }
  if (*output == "false" && std::string_view(function).starts_with("is")) {
    session.result = ExitCode::no;
  }
}

void declareQuery(CLI::App& parser, Session& session, const char* function) {
  const auto target = std::make_shared<Target>();
  target->declare(parser);
  parser.callback([target, &session, function] { ask(session, *target, function); });
}

}  // namespace

void declareDisplayed(CLI::App& parser, Session& session) {
  declareQuery(parser, session, "isdisplayed");
}
void declareEnabled(CLI::App& parser, Session& session) {
  declareQuery(parser, session, "isenabled");
}
void declareHeight(CLI::App& parser, Session& session) {
  declareQuery(parser, session, "getheight");
}
void declareSelected(CLI::App& parser, Session& session) {
  declareQuery(parser, session, "isselected");
}
void declareText(CLI::App& parser, Session& session) {
  declareQuery(parser, session, "gettext");
}
void declareWidth(CLI::App& parser, Session& session) {
  declareQuery(parser, session, "getwidth");
}

}  // namespace tarni::host
