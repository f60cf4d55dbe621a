#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

void declareAction(CLI::App& parser, Invocation& invocation, const char* function) {
  const auto target = std::make_shared<Target>();
  target->declare(parser);
  parser.callback([target, &invocation, function] {
    const auto answer = invocation.call({function, "", "", target->resolve(invocation)});
    if (invocation.options.json) std::cout << printableJson(answer.text()) << '\n';
  });
}

}  // namespace

void declareClick(CLI::App& parser, Invocation& invocation) {
  declareAction(parser, invocation, "clickelement");
}

void declareHighlight(CLI::App& parser, Invocation& invocation) {
  declareAction(parser, invocation, "highlight");
}

}  // namespace tarni::host
