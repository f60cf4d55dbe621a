#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Locator.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"

namespace tarni::host {

void declareType(CLI::App& parser, Session& session) {
  const auto target = std::make_shared<Target>();
  target->declare(parser, "TEXT");
  parser.callback([target, &session] {
    const auto id = target->resolve(session, 1);
    const auto answer = session.call({"sendkeysonelement", "", "", id, target->others().front()});
    if (session.options.json) std::cout << answer.text() << '\n';
  });
}

}  // namespace tarni::host
