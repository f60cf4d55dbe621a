#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/ElementTree.h"
#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Showing.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/source/SourceTree.h"
#include "host/stream/PortTree.h"

namespace tarni::host {

namespace {

std::string place(const Json& description) {
  const auto& rectangle = objectIn(description, "rectangle");
  const auto number = [&rectangle](const char* key) {
    return std::to_string(std::lround(numberOfText(rectangle, key)));
  };
  return number("width") + "x" + number("height") + " at " + number("x") + "," + number("y");
}

void printView(const PortTree& tree, const Json& description, bool paths) {
  if (paths) {
    std::cout << tree.position();
  } else {
    std::cout << tree.indentation() << Terminal::strong(printable(tree.step()));
  }
  std::cout << "  " << Terminal::faint(place(description));
  const auto text = textIn(description, "text");
  if (!text.empty()) std::cout << "  " << inQuotes(text);
  if (isTextTrue(description, "isHidden")) {
    std::cout << "  (hidden)";
  } else if (!isOnScreen(description)) {
    std::cout << "  (off screen)";
  } else if (isCovered(description)) {
    std::cout << "  (covered)";
  }
  std::cout << '\n';
}

// Flat, as the nesting may be deeper than programs can read.
void printAsJson(const PortTree& tree, const Json& description) {
  Json entry = {{"depth", tree.depth()}, {"step", tree.step()}};
  if (const auto xpath = tree.xpath()) entry["xpath"] = *xpath;
  for (const auto& [key, value] : description.items()) {
    if (key != "imageBase64") entry[key] = value;
  }
  std::cout << printableJson(entry.dump());
}

struct TreeOptions {
  bool paths = false;
  bool onScreen = false;
  bool xml = false;
  long changesSince = 0;
};

void treeByPort(Invocation& invocation, const TreeOptions& options) {
  const auto descriptions = invocation.call({"ai_findelements"}).entries();
  const bool json = invocation.options.json;
  PortTree tree;
  bool isFirst = true;
  if (json) std::cout << '[';
  for (const auto& description : descriptions) {
    tree.goTo(description);
    if (options.onScreen && !isInSight(description)) continue;
    if (json) {
      std::cout << (isFirst ? "" : ",");
      printAsJson(tree, description);
    } else {
      printView(tree, description, options.paths);
    }
    isFirst = false;
  }
  if (json) std::cout << "]\n";
  if (descriptions.empty()) throw NotFound("the program has no window, or it is empty");
}

void printElement(const ElementTree::Node& node, bool paths) {
  const Json& element = node.element;
  const bool isWindow = node.depth == 0;
  if (paths && !isWindow) {
    std::cout << node.position;
  } else {
    std::cout << node.indentation << Terminal::strong(printable(node.step));
  }
  std::cout << "  " << Terminal::faint(sizeIn(element) + " at " + placeIn(element));
  const auto text = valueIn(element, isWindow ? "title" : "text");
  if (text && !text->empty()) std::cout << "  " << inQuotes(*text);
  const auto state = stateIn(element);
  if (!state.empty()) std::cout << "  (" << state << ")";
  std::cout << "  " << Terminal::faint("#" + printable(valueIn(element, "element").value_or("?")))
            << '\n';
}

void printChanges(const Json& elements, const Json& gone) {
  for (const auto& element : elements) {
    printElement({element, 1, valueIn(element, "class").value_or("?"), "", ""}, false);
  }
  for (const auto& handle : gone) std::cout << "gone  #" << compact(handle) << '\n';
}

void treeBySession(Invocation& invocation, const TreeOptions& options) {
  auto parameters = Json::object();
  if (options.changesSince != 0) parameters["since"] = options.changesSince;
  auto answer = invocation.ask("tree.get", std::move(parameters));
  Json& elements = answer["elements"];
  if (!elements.is_array()) elements = Json::array();
  if (options.onScreen) {
    std::erase_if(elements.get_ref<Json::array_t&>(),
                  [](const Json& element) { return !isTrue(element, "visible"); });
  }
  if (invocation.printsAnswer(answer)) return;
  const bool isWhole = isTrue(answer, "whole");
  if (options.xml) {
    std::cout << SourceTree(elements).xml(true);
  } else if (isWhole) {
    ElementTree(elements).walk([&](const auto& node) { printElement(node, options.paths); });
  } else {
    printChanges(elements, answer.value("gone", Json::array()));
  }
  if (!options.xml) {
    std::cerr << "tarni: version " << printable(valueIn(answer, "version").value_or("?"))
              << (isWhole && options.changesSince != 0 ? ": all, as what changed is not known" : "")
              << '\n';
  }
  if (isWhole && elements.empty()) throw NotFound("the program has no window");
}

void tree(Invocation& invocation, const TreeOptions& options) {
  if (options.xml || options.changesSince != 0) invocation.needSession();
  (invocation.session() ? treeBySession : treeByPort)(invocation, options);
}

}  // namespace

void declareTree(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<TreeOptions>();
  parser.add_flag("--paths", options->paths,
                  "print each view's whole position, as --xpath takes it");
  parser.add_flag("--on-screen", options->onScreen, kOnScreenHelp);
  auto* const xml = parser.add_flag("--xml", options->xml, "as XML *");
  parser
      .add_option("--changes", options->changesSince,
                  "only what changed since this version, which each tree names *")
      ->type_name("VERSION")
      ->excludes(xml);
  parser.footer(
      "By the session channel of all windows, each element with its identifier behind #; --json\n"
      "prints what `tree.get` of docs/session.md answers. What is marked * takes it. By the "
      "playback\n"
      "port of the key window:\n"
      "What is hidden, off screen for it or clipped away, or covered is in it and marked. With\n"
      "--json one flat array, parents first, each with its depth and its step; a view more than "
      "100\n"
      "levels down has no xpath there, and --paths shows the end of it: it is made of the steps "
      "of\n"
      "the views above it.");
  parser.callback([options, &invocation] { tree(invocation, *options); });
}

}  // namespace tarni::host
