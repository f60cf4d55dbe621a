#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Base64.h"
#include "host/cli/Invocation.h"
#include "host/cli/Showing.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Files.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

constexpr std::size_t kTextColumns = 40;

struct DescribeOptions {
  std::string tag;
  std::string folder;
  bool onScreen = false;
};

// The state in words; what is usual is not said.
std::string stateOf(const Json& element) {
  struct Word {
    const char* key;
    const char* value;
    const char* word;
  };
  constexpr Word kWords[] = {
      {"isProbablyTappable", "true", "tappable"},
      {"isEditable", "true", "editable"},
      {"isScrollable", "true", "scrolls"},
      {"isImageObject", "true", "image"},
      {"isUserInteractionEnabled", "false", "disabled"},
      {"isHidden", "true", "hidden"},
  };
  std::string words;
  const auto add = [&words](const char* word) {
    words += std::string(words.empty() ? "" : ",") + word;
  };
  for (const auto& [key, value, word] : kWords) {
    if (textIn(element, key) == value) add(word);
  }
  if (!isOnScreen(element)) {
    add("off-screen");
  } else if (isCovered(element)) {
    add("covered");
  }
  return words;
}

Terminal::Row rowOf(const Json& element) {
  const auto& rectangle = objectIn(element, "rectangle");
  const auto number = [&rectangle](const char* key) {
    return std::to_string(std::lround(numberIn(rectangle, key)));
  };
  return {textIn(element, "elementID"),
          textIn(element, "elementType"),
          number("x") + "," + number("y"),
          number("width") + "x" + number("height"),
          textIn(element, "childCount"),
          stateOf(element),
          Terminal::clipped(inQuotes(textIn(element, "text")), kTextColumns)};
}

std::string fileName(std::size_t number, std::size_t count, const Json& element) {
  auto digits = std::to_string(number);
  digits.insert(0, std::to_string(count).size() - digits.size(), '0');
  constexpr std::size_t kLongestType = 100;
  auto type = textIn(element, "elementType").substr(0, kLongestType);
  std::replace_if(
      type.begin(), type.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return digits + "-" + type + ".jpg";
}

void writePictures(const Json& elements, const std::filesystem::path& folder) {
  makePrivateFolder(folder);
  std::size_t written = 0;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const auto picture = decodeBase64(textIn(elements[i], "imageBase64"));
    if (picture.empty()) continue;
    writePrivateFile(folder / fileName(i + 1, elements.size(), elements[i]), picture);
    ++written;
  }
  std::cerr << "tarni: " << written << " pictures in " << folder.string()
            << ", numbered as the elements\n";
}

void describe(Invocation& invocation, const DescribeOptions& options) {
  PlaybackCommand command{"ai_findelements", options.tag == "*" ? "" : options.tag};
  auto answer = invocation.call(command);
  if (answer.entries().empty()) {
    command.window = kAnyWindow;
    answer = invocation.call(command);
  }
  Json elements = answer.entries();
  if (options.onScreen) {
    std::erase_if(elements.get_ref<Json::array_t&>(),
                  [](const Json& element) { return !isInSight(element); });
  }
  if (invocation.options.json) {
    std::cout << printableJson(options.onScreen ? elements.dump() : answer.text()) << '\n';
  } else if (!elements.empty()) {
    std::vector<Terminal::Row> rows{{"ID", "CLASS", "AT", "SIZE", "CHILDREN", "STATE", "TEXT"}};
    for (const auto& element : elements) rows.push_back(rowOf(element));
    Terminal::printTable(std::move(rows));
  }
  if (!options.folder.empty()) writePictures(elements, options.folder);
  if (elements.empty()) {
    throw NotFound("no " + (options.tag.empty() ? "element" : options.tag) + " is there");
  }
}

}  // namespace

void declareDescribe(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<DescribeOptions>();
  auto* const tag =
      parser.add_option("--tag", options->tag, "only this class, as UIButton")->type_name("CLASS");
  parser.add_option("TAG", options->tag, "the same")->option_text(" ")->excludes(tag);
  parser.add_flag("--on-screen", options->onScreen, kOnScreenHelp);
  parser.add_option("--images", options->folder, "write a picture of each into this folder")
      ->type_name("FOLDER");
  parser.callback([options, &invocation] { describe(invocation, *options); });
}

}  // namespace tarni::host
