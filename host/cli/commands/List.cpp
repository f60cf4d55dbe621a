#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>

#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/launch/NetworkNamespace.h"
#include "host/launch/ProgramRegistry.h"
#include "host/launch/RunningProgram.h"
#include "host/session/StartLine.h"

namespace tarni::host {

namespace {

struct Listed {
  RegisteredProgram program;
  bool hasSession = false;
  bool isRegistered = true;
};

// Those that `tarni run` has started, and those into which the agent came in another way.
std::vector<Listed> listed() {
  const ProgramRegistry registry;
  std::vector<Listed> list;
  std::set<pid_t> known;
  for (auto& program : registry.all()) {
    for (const auto& process : processesFrom(program.pid)) known.insert(process.pid);
    const bool hasSession = registry.sessionOf(program).has_value();
    list.push_back({std::move(program), hasSession});
  }
  for (const auto& process : processesWithAgent()) {
    if (known.contains(process.pid)) continue;
    const auto command = joined(startLineOf(process.pid));
    list.push_back({{"", process.pid, command, !isInThisNetwork(process.pid)}, false, false});
  }
  return list;
}

}  // namespace

void declareList(CLI::App& parser, Invocation& invocation) {
  parser.footer(
      "--in takes the NAME or the PROCESS. One without a session channel, as `tarni attach` "
      "leaves\n"
      "it, is reached by its ports.");
  parser.callback([&invocation] {
    auto json = Json::array();
    std::vector<Terminal::Row> rows{{"NAME", "PROCESS", "ISOLATED", "SESSION", "COMMAND"}};
    const auto yes = [](bool value) { return std::string(value ? "yes" : "no"); };
    for (const auto& [program, hasSession, isRegistered] : listed()) {
      json.push_back({{"name", program.name},
                      {"pid", program.pid},
                      {"isolated", program.isIsolated},
                      {"session", hasSession},
                      {"command", program.command}});
      rows.push_back({isRegistered ? program.name : "-", std::to_string(program.pid),
                      yes(program.isIsolated), yes(hasSession), program.command});
    }
    if (invocation.options.json) {
      std::cout << printableJson(json.dump()) << '\n';
    } else if (rows.size() > 1) {
      Terminal::printTable(std::move(rows));
    }
    if (json.empty()) throw NotFound("no program is running with the agent");
  });
}

}  // namespace tarni::host
