#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/SafeOutput.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Base64.h"
#include "host/guard/Files.h"
#include "host/guard/Json.h"
#include "host/guard/Text.h"

namespace tarni::host {

namespace {

std::string extensionOf(const std::filesystem::path& file) {
  return lowerCase(file.extension().string());
}

bool isJpeg(const std::string& extension) {
  return extension == ".jpg" || extension == ".jpeg";
}

// A name of another format would promise what the file does not hold.
void refuseOtherFormats(const std::string& extension) {
  for (const auto* other : {".gif", ".bmp", ".webp", ".tif", ".tiff", ".svg", ".pdf", ".ppm"}) {
    if (extension == other) {
      throw std::invalid_argument("pictures are PNG or JPEG: name the file .png or .jpg, not " +
                                  extension);
    }
  }
}

std::string pictureByPort(Invocation& invocation, const std::string& file) {
  if (extensionOf(file) == ".png") {
    throw std::invalid_argument(
        "the playback port's pictures are JPEG: name the file .jpg, not .png");
  }
  const auto answer = invocation.call({"ai_getscreensnapshot"});
  return decodeBase64(answer.output().value_or(""));
}

std::string pictureBySession(Invocation& invocation, const Target& target) {
  const auto answer = target.isNamed() ? invocation.ask("element.picture",
                                                        {{"element", target.element(invocation)}})
                                       : invocation.ask("window.picture");
  return decodeBase64(textIn(answer, "data"));
}

// The session channel's pictures are PNG, those of the playback port JPEG.
void snapshot(Invocation& invocation, const Target& target, const std::string& file) {
  const auto extension = extensionOf(file);
  refuseOtherFormats(extension);
  if (target.isNamed()) invocation.needSession();
  if (target.isNamed() && isJpeg(extension)) {
    throw std::invalid_argument("the picture of an element is PNG: name the file .png");
  }
  const bool bySession = !isJpeg(extension) && invocation.session();
  const auto picture =
      bySession ? pictureBySession(invocation, target) : pictureByPort(invocation, file);
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
  const auto target = std::make_shared<Target>();
  parser.add_option("-o,--output", *file, "the file; \"-\" for standard output")
      ->type_name("FILE.png|FILE.jpg")
      ->required();
  target->declare(parser);
  parser.footer(
      "PNG by the session channel, of the key window or of an element; JPEG by the playback port,\n"
      "of the window. \"-\" is PNG when there is a session channel.");
  parser.callback([file, target, &invocation] { snapshot(invocation, *target, *file); });
}

}  // namespace tarni::host
