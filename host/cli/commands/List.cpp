#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/launch/ProgramRegistry.h"

namespace tarni::host {

void declareList(CLI::App& parser, Invocation& invocation) {
  parser.callback([&invocation] {
    auto json = Json::array();
    std::vector<Terminal::Row> rows{{"NAME", "PROCESS", "COMMAND"}};
    for (const auto& program : ProgramRegistry().all()) {
      json.push_back({{"name", program.name}, {"pid", program.pid}, {"command", program.command}});
      rows.push_back({program.name, std::to_string(program.pid), program.command});
    }
    if (invocation.options.json) {
      std::cout << printableJson(json.dump()) << '\n';
    } else if (rows.size() > 1) {
      Terminal::printTable(std::move(rows));
    }
    if (json.empty()) throw NotFound("no isolated program is running");
  });
}

}  // namespace tarni::host
