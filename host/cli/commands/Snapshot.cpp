#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/cli/Base64.h"
#include "host/cli/Invocation.h"
#include "host/cli/SafeOutput.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Files.h"

namespace tarni::host {

namespace {

// A name of another format would promise what the file does not hold.
void requireJpeg(const std::filesystem::path& file) {
  auto extension = file.extension().string();
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const auto* other : {".png", ".gif", ".bmp", ".webp", ".tif", ".tiff", ".svg", ".pdf"}) {
    if (extension == other) {
      throw std::invalid_argument("the agent's pictures are JPEG: name the file .jpg, not " +
                                  extension);
    }
  }
}

void snapshot(Invocation& invocation, const std::string& file) {
  requireJpeg(file);
  const auto answer = invocation.call({"ai_getscreensnapshot"});
  const auto picture = decodeBase64(answer.output().value_or(""));
  if (picture.empty()) throw NotFound("the program has no window to take a picture of");
  if (file == "-") {
    SafeOutput::writeRaw(std::cout, picture);
  } else {
    writePrivateFile(file, picture);
  }
}

}  // namespace

void declareSnapshot(CLI::App& parser, Invocation& invocation) {
  const auto file = std::make_shared<std::string>();
  parser.add_option("-o,--output", *file, "the JPEG file; \"-\" for standard output")
      ->type_name("FILE.jpg")
      ->required();
  parser.callback([file, &invocation] { snapshot(invocation, *file); });
}

}  // namespace tarni::host
