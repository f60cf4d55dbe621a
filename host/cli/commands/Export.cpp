#include "host/export/Export.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/cli/SafeOutput.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Files.h"
#include "host/session/Session.h"

namespace tarni::host {

namespace {

struct ExportOptions {
  std::string file;
  std::string output;
  bool isPython = false;
  bool isJavaScript = false;
};

void exportSession(const ExportOptions& options) {
  const auto lines = readSessionLines(options.file);
  if (lines.version == 1) {
    throw std::invalid_argument(options.file +
                                " is a session of the fixed stream, whose steps do not say how "
                                "WebDriver finds their elements: record it anew");
  }
  const auto name = std::filesystem::path(options.file).stem().string();
  const auto language = options.isJavaScript ? ExportLanguage::JavaScript : ExportLanguage::Python;
  const auto test = exportedTest(Session::fromLines(lines), language, name);
  if (options.output.empty()) {
    SafeOutput::writeRaw(std::cout, test);
  } else {
    writePrivateFile(options.output, test);
  }
}

}  // namespace

void declareExport(CLI::App& parser, Invocation&) {
  const auto options = std::make_shared<ExportOptions>();
  parser.add_option("SESSION", options->file, "what `tarni record -o` has kept")
      ->option_text(" ")
      ->required();
  auto* const language = parser.add_option_group("language");
  language->add_flag("--python", options->isPython, "for pytest, with Selenium's client");
  language->add_flag("--javascript", options->isJavaScript, "for `node --test`, with webdriverio");
  language->require_option(1);
  parser.add_option("-o,--output", options->output, "write it here, not to standard output")
      ->type_name("FILE");
  parser.footer(
      "The test drives the program through `tarni webdriver`, whose address it takes from\n"
      "TARNI_WEBDRIVER (default http://127.0.0.1:4723). A secret comes from the environment, "
      "as\n"
      "TARNI_SECRET_NAME.");
  parser.callback([options] { exportSession(*options); });
}

}  // namespace tarni::host
