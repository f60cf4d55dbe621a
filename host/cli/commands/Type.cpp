#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Locator.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"
#include "host/session/Typing.h"

namespace tarni::host {

void declareType(CLI::App& parser, Session& session) {
  const auto target = std::make_shared<Target>();
  target->declare(parser, "TEXT");
  parser.callback([target, &session] {
    const auto id = target->resolve(session, 1);
    const auto text = target->others().front();
    const Typing typing(session.playback(), id);
    const auto answer = session.call({"sendkeysonelement", "", "", id, text});
    if (session.options.json) std::cout << printableJson(answer.text()) << '\n';
    if (const auto outcome = typing.outcome(text); outcome.isFailure) {
      throw NotFound(target->description() + ": " + outcome.message);
    }
  });
}

}  // namespace tarni::host
