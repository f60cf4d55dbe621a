#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/cli/Locator.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

void printWithDetails(Session& session, const std::vector<std::string>& ids) {
  const auto ask = [&session](const char* function, const std::string& id) {
    return session.call({function, "", "", id}).output().value_or("");
  };
  std::vector<Terminal::Row> rows{{"ID", "SIZE", "ENABLED", "DISPLAYED", "TEXT"}};
  for (const auto& id : ids) {
    rows.push_back({id, ask("getwidth", id) + "x" + ask("getheight", id), ask("isenabled", id),
                    ask("isdisplayed", id), inQuotes(ask("gettext", id))});
  }
  Terminal::printTable(std::move(rows));
}

void find(Session& session, const Locator& locator, bool details) {
  const auto answer = locator.find(session);
  const auto ids = answer.elementIds();
  if (session.options.json) {
    std::cout << printableJson(answer.text()) << '\n';
  } else if (details && !ids.empty()) {
    printWithDetails(session, ids);
  } else {
    for (const auto& id : ids) std::cout << printable(id) << '\n';
  }
  if (ids.empty()) throw NotFound("no " + locator.description() + " is on screen");
}

}  // namespace

void declareFind(CLI::App& parser, Session& session) {
  struct Options {
    Locator locator;
    bool details = false;
  };
  const auto options = std::make_shared<Options>();
  options->locator.declare(parser);
  parser.add_option("TAG", options->locator.tag, "its class, as UIButton; \"\" or \"*\" for any")
      ->option_text(" ");
  parser.add_flag("--long", options->details, "with size, state and text of each");
  parser.callback([options, &session] { find(session, options->locator, options->details); });
}

}  // namespace tarni::host
