#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Showing.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/session/ViewTree.h"

namespace tarni::host {

namespace {

std::string place(const Json& description) {
  const auto& rectangle = objectIn(description, "rectangle");
  const auto number = [&rectangle](const char* key) {
    return std::to_string(std::lround(numberIn(rectangle, key)));
  };
  return number("width") + "x" + number("height") + " at " + number("x") + "," + number("y");
}

void printView(const ViewTree& tree, const Json& description, bool paths) {
  if (paths) {
    std::cout << tree.position();
  } else {
    std::cout << tree.indentation() << Terminal::strong(printable(tree.step()));
  }
  std::cout << "  " << Terminal::faint(place(description));
  const auto text = textIn(description, "text");
  if (!text.empty()) std::cout << "  " << inQuotes(text);
  if (isTrue(description, "isHidden")) {
    std::cout << "  (hidden)";
  } else if (!isOnScreen(description)) {
    std::cout << "  (off screen)";
  } else if (isCovered(description)) {
    std::cout << "  (covered)";
  }
  std::cout << '\n';
}

// Flat, as the nesting may be deeper than programs can read.
void printAsJson(const ViewTree& tree, const Json& description) {
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
};

void tree(Invocation& invocation, const TreeOptions& options) {
  const auto descriptions = invocation.call({"ai_findelements"}).entries();
  const bool json = invocation.options.json;
  ViewTree tree;
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

}  // namespace

void declareTree(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<TreeOptions>();
  parser.add_flag("--paths", options->paths,
                  "print each view's whole position, as --xpath takes it");
  parser.add_flag("--on-screen", options->onScreen, kOnScreenHelp);
  parser.footer(
      "What is hidden, off screen for it or clipped away, or covered is in it and marked. With\n"
      "--json one flat array, parents first, each with its depth and its step; a view more than "
      "100\n"
      "levels down has no xpath there, and --paths shows the end of it: it is made of the steps "
      "of\n"
      "the views above it.");
  parser.callback([options, &invocation] { tree(invocation, *options); });
}

}  // namespace tarni::host
