#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Showing.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

struct FindOptions {
  Locator locator;
  bool details = false;
  bool onScreen = false;
};

// The identifiers with what is known of each, in the columns of --long.
std::vector<Terminal::Row> rowsOf(Invocation& invocation, const std::vector<std::string>& ids,
                                  const Showing& showing) {
  const auto ask = [&invocation](const char* function, const std::string& id) {
    return invocation.call({function, "", "", id}).output().value_or("");
  };
  std::vector<Terminal::Row> rows;
  for (const auto& id : ids) {
    const auto looks = Looks::of(invocation, id);
    rows.push_back({id, looks.width + "x" + looks.height, ask("isenabled", id),
                    showing.of(looks).value_or(ask("isdisplayed", id)), inQuotes(looks.text)});
  }
  return rows;
}

void printIds(const std::vector<Terminal::Row>& rows, bool json) {
  auto entries = Json::array();
  for (const auto& row : rows) {
    if (json) {
      entries.push_back({{"elementID", row.front()}});
    } else {
      std::cout << printable(row.front()) << '\n';
    }
  }
  if (json) std::cout << printableJson(entries.dump()) << '\n';
}

// Found to know their window, and again once that is described, as it makes identifiers void.
void findWithDetails(Invocation& invocation, const FindOptions& options) {
  std::vector<Terminal::Row> rows;
  if (const auto first = options.locator.find(invocation).elementIds(); !first.empty()) {
    const Showing showing(invocation, first.front(), true,
                          options.onScreen ? isInSight : isOnScreen);
    rows = rowsOf(invocation, options.locator.findOnce(invocation).elementIds(), showing);
  }
  if (options.onScreen) std::erase_if(rows, [](const auto& row) { return row[3] == "false"; });
  const bool isEmpty = rows.empty();
  if (!options.details || invocation.options.json) {
    printIds(rows, invocation.options.json);
  } else if (!isEmpty) {
    rows.insert(rows.begin(), {"ID", "SIZE", "ENABLED", "DISPLAYED", "TEXT"});
    Terminal::printTable(std::move(rows));
  }
  if (isEmpty) options.locator.refuse(invocation);
}

void findBySession(Invocation& invocation, const FindOptions& options) {
  auto found = options.locator.elements(invocation);
  if (options.onScreen) {
    std::erase_if(found, [](const Json& element) { return !isTrue(element, "visible"); });
  }
  if (invocation.options.json) {
    invocation.printsAnswer({{"elements", found}});
  } else if (options.details && !found.empty()) {
    addWindows(invocation, found);
    printElements(found);
  } else {
    for (const auto& element : found) std::cout << handleOf(element) << '\n';
  }
  if (found.empty()) options.locator.refuse(invocation);
}

void find(Invocation& invocation, const FindOptions& options) {
  if (invocation.session()) {
    findBySession(invocation, options);
    return;
  }
  if (options.onScreen || (options.details && !invocation.options.json)) {
    findWithDetails(invocation, options);
    return;
  }
  const auto answer = options.locator.find(invocation);
  const auto ids = answer.elementIds();
  if (invocation.options.json) {
    std::cout << printableJson(answer.text()) << '\n';
  } else {
    for (const auto& id : ids) std::cout << printable(id) << '\n';
  }
  if (ids.empty()) options.locator.refuse(invocation);
}

}  // namespace

void declareFind(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<FindOptions>();
  options->locator.declare(parser);
  auto* const tag =
      parser.add_option("--tag,--class", options->locator.tag, "its class, as UIButton")
          ->type_name("CLASS");
  parser.add_option("TAG", options->locator.tag, "the same; \"\" or \"*\" for any")
      ->option_text(" ")
      ->excludes(tag);
  parser.add_flag("--long", options->details, "with size, state and text of each");
  parser.add_flag("--on-screen", options->onScreen, kOnScreenHelp);
  parser.callback([options, &invocation] { find(invocation, *options); });
  parser.footer(
      "Identifiers of the session channel are numbers that last as long as the element; those of\n"
      "the playback port hold until the next find. What is on a page that is not shown is found,\n"
      "too; --long tells it apart (by the playback port DISPLAYED, which is \"?\" for one that "
      "looks\n"
      "like another of which this differs). What is marked * takes the session channel.");
}

}  // namespace tarni::host
