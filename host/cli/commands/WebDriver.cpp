#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>
#include <memory>

#include "host/cli/Serving.h"
#include "host/cli/Subcommands.h"
#include "host/webdriver/Server.h"

namespace tarni::host {

namespace {

// Until a signal asks for its end, which is that of its sessions, too.
void serve(const webdriver::ServerOptions& options) {
  const AwaitedSignals signals;
  signal(SIGPIPE, SIG_IGN);
  webdriver::Server server(options);
  std::cout << server.url() << std::endl;
  serveUntilAsked(server, signals);
}

}  // namespace

void declareWebDriver(CLI::App& parser, Invocation&) {
  const auto options = std::make_shared<webdriver::ServerOptions>();
  parser.add_option("--port", options->port, "the port to listen on, 0 for a free one (4723)")
      ->type_name("PORT");
  parser.add_option("--address", options->address, "the address to listen on (127.0.0.1)")
      ->type_name("ADDRESS");
  parser.add_option("--max-sessions", options->mostSessions, "how many at a time (8)")
      ->type_name("N")
      ->check(CLI::PositiveNumber.description(""));
  parser
      .add_option("--allow-cors", options->origins,
                  "let pages of this origin ask, as http://127.0.0.1:8080; * for all")
      ->type_name("ORIGIN");
  parser.callback([options] { serve(*options); });
  parser.footer(
      "Clients of Selenium and Appium connect to the address that it prints; the capability\n"
      "appium:app says what to start. Every session has its program, in a network, on a display\n"
      "and with folders of its own, and all of it ends with the session. Whoever reaches the port\n"
      "starts programs as this user: it listens on this machine only, unless --address says\n"
      "otherwise. docs/webdriver.md has the rest.");
}

}  // namespace tarni::host
