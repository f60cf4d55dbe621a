#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Listening.h"
#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/session/ViewTree.h"

namespace tarni::host {

using nlohmann::ordered_json;

namespace {

constexpr std::size_t kDeepestIndent = 40;

std::string place(const ordered_json& description) {
  const auto rectangle = description.value("rectangle", ordered_json::object());
  const auto number = [&rectangle](const char* key) {
    return std::to_string(std::lround(std::strtod(textAt(rectangle, key).c_str(), nullptr)));
  };
  return number("width") + "x" + number("height") + " at " + number("x") + "," + number("y");
}

std::string indent(std::size_t depth) {
  const auto spaces = std::string(2 * std::min(depth, kDeepestIndent), ' ');
  return depth <= kDeepestIndent ? spaces : spaces + "(" + std::to_string(depth) + ") ";
}

void printNode(const ViewTreeNode& node, const ordered_json& description, bool paths) {
  const auto text = textAt(description, "text");
  std::cout << (paths ? node.xpath : indent(node.depth) + Terminal::strong(node.step)) << "  "
            << Terminal::faint(place(description));
  if (!text.empty()) std::cout << "  " << Terminal::quoted(text);
  if (textAt(description, "isHidden") == "true") std::cout << "  (hidden)";
  std::cout << '\n';
}

// Flat, as the nesting may be deeper than programs can read.
ordered_json asJson(const ViewTreeNode& node, ordered_json description) {
  ordered_json entry = {{"depth", node.depth}, {"xpath", node.xpath}};
  description.erase("imageBase64");
  entry.update(description);
  return entry;
}

void tree(Session& session, bool paths) {
  const auto descriptions = session.call({"ai_findelements"}).entries();
  const auto nodes = viewTree(descriptions);
  auto json = ordered_json::array();
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (session.options.json) {
      json.push_back(asJson(nodes[i], descriptions[i]));
    } else {
      printNode(nodes[i], descriptions[i], paths);
    }
  }
  if (session.options.json) std::cout << json.dump() << '\n';
  if (nodes.empty()) throw NotFound("the program has no window, or it is empty");
}

}  // namespace

void declareTree(CLI::App& parser, Session& session) {
  const auto paths = std::make_shared<bool>(false);
  parser.add_flag("--paths", *paths, "print each view's whole position, as --xpath takes it");
  parser.footer(
      "Hidden views are in it. With --json one flat array, parents first, each with its depth.");
  parser.callback([paths, &session] { tree(session, *paths); });
}

}  // namespace tarni::host
