#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/cli/Subcommands.h"
#include "host/http/Server.h"
#include "host/launch/ProgramLauncher.h"

namespace tarni::host {

namespace {

struct ServeOptions {
  std::filesystem::path folder;
  std::uint16_t port = 0;
};

// Until the process is ended. Only this machine reaches it.
void serve(const ServeOptions& options) {
  http::Setup setup;
  setup.port = options.port;
  setup.folder = options.folder;
  http::Server server(setup, http::Routes({}));
  std::cout << server.url() << std::endl;
  server.serve();
}

}  // namespace

void declareScripts(CLI::App& parser, Invocation&) {
  const auto options = std::make_shared<ServeOptions>();
  auto* const command =
      parser.add_subcommand("serve", "Offer them on this machine over HTTP; prints the address");
  command->add_option("--folder", options->folder, "another folder than the one of this tool")
      ->type_name("FOLDER");
  command->add_option("--on", options->port, "the port to listen on (default: a free one)")
      ->type_name("PORT")
      ->check(CLI::Range(0, 65535).description(""));
  command->callback([options] {
    if (options->folder.empty()) options->folder = scriptsFolder();
    serve(*options);
  });
  parser.require_subcommand(1);
  parser.footer(
      "`tarni run` lets the agent read the scripts from this tool's folder, unless TARNI_SCRIPTS\n"
      "names another address: TARNI_SCRIPTS=http://127.0.0.1:PORT tarni run -- PROGRAM");
}

}  // namespace tarni::host
