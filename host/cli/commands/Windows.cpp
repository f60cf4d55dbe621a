#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

struct WindowOptions {
  std::string activate;
  std::string close;
  std::string size;
  std::string window;
};

void list(Invocation& invocation) {
  const auto answer = invocation.ask("window.list");
  const auto windows = answer.value("windows", Json::array());
  if (!invocation.printsAnswer(answer)) {
    std::vector<Terminal::Row> rows{{"ID", "CLASS", "AT", "SIZE", "STATE", "TITLE"}};
    for (const auto& window : windows) {
      rows.push_back({valueIn(window, "element").value_or("?"),
                      valueIn(window, "class").value_or("?"), placeIn(window, "screenRect"),
                      sizeIn(window, "screenRect"), stateIn(window),
                      inQuotes(valueIn(window, "title").value_or(""))});
    }
    if (rows.size() > 1) Terminal::printTable(std::move(rows));
  }
  if (windows.empty()) throw NotFound("the program shows no window");
}

Json windowNamed(const std::string& id) {
  return id.empty() ? Json::object() : Json{{"window", handleOf(id)}};
}

void resize(Invocation& invocation, const WindowOptions& options) {
  auto parameters = windowNamed(options.window);
  int width = 0;
  int height = 0;
  char rest = 0;
  if (std::sscanf(options.size.c_str(), "%dx%d%c", &width, &height, &rest) != 2) {
    throw std::invalid_argument("\"" + options.size + "\" is no size like 800x600");
  }
  parameters["width"] = width;
  parameters["height"] = height;
  invocation.act("window.resize", std::move(parameters));
}

}  // namespace

void declareWindows(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<WindowOptions>();
  const auto action = [&parser](const char* name, std::string& value, const char* what) {
    return parser.add_option(name, value, what)->type_name("ID");
  };
  auto* const activate = action("--activate", options->activate, "bring this one to the front");
  auto* const close = action("--close", options->close, "close this one as a person does");
  auto* const size = parser.add_option("--resize", options->size, "give the window this size")
                         ->type_name("WIDTHxHEIGHT");
  action("--window", options->window, "the one to resize; the key window without")->needs(size);
  activate->excludes(close)->excludes(size);
  close->excludes(size);
  parser.footer(kSessionOnly);
  parser.callback([=, &invocation] {
    invocation.needSession();
    if (activate->count() > 0) {
      invocation.act("window.activate", windowNamed(options->activate));
    } else if (close->count() > 0) {
      invocation.act("window.close", windowNamed(options->close));
    } else if (size->count() > 0) {
      resize(invocation, *options);
    } else {
      list(invocation);
    }
  });
}

}  // namespace tarni::host
