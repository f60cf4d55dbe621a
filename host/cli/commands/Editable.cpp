#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"
#include "host/session_client/Selector.h"

namespace tarni::host {

namespace {

void editableBySession(Invocation& invocation, const PlaybackCommand& command) {
  Selector selector;
  const auto& wanted = command.accessorValue;
  if (command.accessorType == "text") selector.placeholder = wanted;
  if (command.accessorType == "xpath") selector = Selector::parse("xpath=" + wanted);
  if (selector.isEmpty()) selector.textContains = "";
  auto found = findAll(invocation.needSession(), {selector});
  const bool isPart = command.accessorType == "partialtext";
  std::erase_if(found, [&](const Json& element) {
    const auto placeholder = valueIn(element, "placeholder").value_or("");
    return !isTrue(element, "editable") ||
           (isPart && placeholder.find(wanted) == std::string::npos);
  });
  if (!invocation.printsAnswer({{"elements", found}})) {
    for (const auto& element : found) std::cout << handleOf(element) << '\n';
  }
  if (found.empty()) throw NotFound("no such text field is on screen");
}

}  // namespace

void declareEditable(CLI::App& parser, Invocation& invocation) {
  const auto command = std::make_shared<PlaybackCommand>();
  command->functionName = "findeditablecomponents";
  const auto accessor = [&parser, &command](const char* option, const char* type,
                                            const char* meaning) {
    return parser.add_option_function<std::string>(
        option,
        [command, type](const std::string& value) {
          command->accessorType = type;
          command->accessorValue = value;
        },
        meaning);
  };
  auto* const text = accessor("--text", "text", "its placeholder is exactly this");
  auto* const partial = accessor("--partial", "partialtext", "its placeholder contains this");
  auto* const xpath = accessor("--xpath", "xpath", "its position in the view tree");
  text->excludes(partial)->excludes(xpath);
  partial->excludes(xpath);
  parser.callback([command, &invocation] {
    if (invocation.session()) {
      editableBySession(invocation, *command);
      return;
    }
    const auto answer = invocation.call(*command);
    const auto ids = answer.elementIds();
    if (invocation.options.json) {
      std::cout << printableJson(answer.text()) << '\n';
    } else {
      for (const auto& id : ids) std::cout << printable(id) << '\n';
    }
    if (ids.empty()) throw NotFound("no such text field is on screen");
  });
}

}  // namespace tarni::host
