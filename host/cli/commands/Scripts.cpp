#include <httplib.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "host/cli/Subcommands.h"
#include "host/launch/ProgramLauncher.h"

namespace tarni::host {

namespace {

struct ServeOptions {
  std::filesystem::path folder;
  int port = 0;
};

// Until the process is ended. Only this machine reaches it.
void serve(const ServeOptions& options) {
  constexpr auto kHost = "127.0.0.1";
  httplib::Server server;
  if (!server.set_mount_point("/", options.folder.string())) {
    throw std::runtime_error("no folder " + options.folder.string());
  }
  server.set_file_extension_and_mimetype_mapping("js", "text/javascript; charset=utf-8");
  const bool isBound = options.port == 0 || server.bind_to_port(kHost, options.port);
  const int port = options.port == 0 ? server.bind_to_any_port(kHost) : options.port;
  if (!isBound || port < 0) throw std::runtime_error("cannot listen on the port");
  std::cout << "http://" << kHost << ':' << port << std::endl;
  server.listen_after_bind();
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
