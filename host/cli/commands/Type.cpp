#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"
#include "host/session/Typing.h"

namespace tarni::host {

void declareType(CLI::App& parser, Invocation& invocation) {
  const auto target = std::make_shared<Target>();
  target->declare(parser, "TEXT");
  parser.callback([target, &invocation] {
    const auto id = target->resolve(invocation, 1);
    const auto text = target->others().front();
    const Typing typing(invocation.playback(), id);
    const auto answer = invocation.call({"sendkeysonelement", "", "", id, text});
    if (invocation.options.json) std::cout << printableJson(answer.text()) << '\n';
    if (const auto outcome = typing.outcome(text); outcome.isFailure) {
      throw NotFound(target->description() + ": " + outcome.message);
    }
  });
}

}  // namespace tarni::host
