#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Locator.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

void declareAction(CLI::App& parser, Session& session, const char* function) {
  const auto target = std::make_shared<Target>();
  target->declare(parser);
  parser.callback([target, &session, function] {
    const auto answer = session.call({function, "", "", target->resolve(session)});
    if (session.options.json) std::cout << printableJson(answer.text()) << '\n';
  });
}

}  // namespace

void declareClick(CLI::App& parser, Session& session) {
  declareAction(parser, session, "clickelement");
}

void declareHighlight(CLI::App& parser, Session& session) {
  declareAction(parser, session, "highlight");
}

}  // namespace tarni::host
