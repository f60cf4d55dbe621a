#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

void declareCosts(CLI::App& parser, Invocation& invocation) {
  parser.footer(
      "busyMs: how long its main thread was busy; longestMs and beganWith: its longest stretch "
      "and\n"
      "what began it; cpuMs: processor time, of the program's whole life. --json of a command "
      "that\n"
      "acts has its own costs.");
  parser.callback([&invocation] {
    invocation.needSession();
    const auto answer = invocation.ask("app.costs");
    if (!invocation.printsAnswer(answer)) printMembers(answer);
  });
}

void declareCall(CLI::App& parser, Invocation& invocation) {
  struct Call {
    std::string method;
    std::string parameters = "{}";
  };
  const auto call = std::make_shared<Call>();
  parser.add_option("METHOD", call->method, "the method, as window.list")->required();
  parser.add_option("PARAMETERS", call->parameters, "an object of JSON")->option_text(" ");
  parser.footer("docs/session.md lists the methods with their parameters and answers.");
  parser.callback([call, &invocation] {
    invocation.needSession();
    auto parameters = readJson(call->parameters);
    if (!parameters.is_object()) throw std::invalid_argument("the parameters are no JSON object");
    const auto answer = invocation.ask(call->method, std::move(parameters));
    std::cout << printableJson(compact(answer)) << '\n';
  });
}

}  // namespace tarni::host
