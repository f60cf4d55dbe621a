#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/SafeOutput.h"
#include "host/cli/Showing.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

// As it is for a program, which may compare it.
void print(const std::string& value) {
  if (isatty(STDOUT_FILENO) == 1) {
    std::cout << value;
  } else {
    SafeOutput::writeRaw(std::cout, value);
  }
  std::cout << '\n';
}

void conclude(Invocation& invocation, std::string_view function,
              const std::optional<std::string>& output) {
  if (!output) {
    throw NotFound(function == "isselected" ? "the element is no switch"
                                            : "the element has no answer to this");
  }
  if (*output == "false" && function.starts_with("is")) invocation.result = ExitCode::No;
}

void ask(Invocation& invocation, const Target& target, const char* function) {
  const auto id = target.resolve(invocation);
  const auto answer = invocation.call({function, "", "", id});
  const auto output = answer.output();
  if (invocation.options.json) {
    std::cout << printableJson(answer.text()) << '\n';
  } else if (output) {
    print(*output);
  }
  conclude(invocation, function, output);
}

// The member of a description that answers a query of the playback port.
std::optional<std::string> answerIn(const Json& element, std::string_view function) {
  if (function == "gettext") return valueIn(element, "text").value_or("");
  if (function == "isenabled") return valueIn(element, "enabled");
  if (function == "isdisplayed") return valueIn(element, "visible");
  if (function == "isselected") {
    const auto checked = valueIn(element, "checked");
    return checked ? checked : valueIn(element, "selected");
  }
  const auto size = sizeIn(element);
  const auto cross = size.find('x');
  if (cross == std::string::npos) return std::nullopt;
  return function == "getwidth" ? size.substr(0, cross) : size.substr(cross + 1);
}

void askBySession(Invocation& invocation, const Target& target, const char* function) {
  const auto element = target.described(invocation);
  const auto output = answerIn(element, function);
  if (!invocation.printsAnswer(element) && output) print(*output);
  conclude(invocation, function, output);
}

// Where the descriptions do not tell, as of a page's element, the agent's own answer stands.
void tellDisplayed(Invocation& invocation, const Target& target) {
  const auto id = target.resolve(invocation);
  const auto looks = Looks::of(invocation, id);
  const auto byWire = invocation.call({"isdisplayed", "", "", id}).output();
  if (!byWire) throw NotFound("the element has no answer to this");
  const auto output = Showing(invocation, id, target.isGiven()).of(looks).value_or(*byWire);
  if (output == "?") {
    throw NotFound("others look like it, some of them on screen and some not: `tarni tree` tells");
  }
  std::cout << (invocation.options.json ? "[{\"output\":\"" + output + "\"}]" : output) << '\n';
  if (output == "false") invocation.result = ExitCode::No;
}

void declareQuery(CLI::App& parser, Invocation& invocation, const char* function) {
  const auto target = std::make_shared<Target>();
  target->declare(parser);
  parser.footer(kNeedsSession);
  parser.callback([target, &invocation, function] {
    (invocation.session() ? askBySession : ask)(invocation, *target, function);
  });
}

}  // namespace

void declareDisplayed(CLI::App& parser, Invocation& invocation) {
  const auto target = std::make_shared<Target>();
  target->declare(parser);
  parser.footer(
      "False also for what is on a page that is not shown or is clipped away, where the playback\n"
      "port's `isdisplayed` tells of geometry alone. By that port it describes all elements for "
      "it,\n"
      "so that identifiers of a former find hold no longer. What is marked * takes the session "
      "channel.");
  parser.callback([target, &invocation] {
    if (invocation.session()) {
      askBySession(invocation, *target, "isdisplayed");
    } else {
      tellDisplayed(invocation, *target);
    }
  });
}
void declareEnabled(CLI::App& parser, Invocation& invocation) {
  declareQuery(parser, invocation, "isenabled");
}
void declareHeight(CLI::App& parser, Invocation& invocation) {
  declareQuery(parser, invocation, "getheight");
}
void declareSelected(CLI::App& parser, Invocation& invocation) {
  declareQuery(parser, invocation, "isselected");
}
void declareText(CLI::App& parser, Invocation& invocation) {
  declareQuery(parser, invocation, "gettext");
}
void declareWidth(CLI::App& parser, Invocation& invocation) {
  declareQuery(parser, invocation, "getwidth");
}

}  // namespace tarni::host
