#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Showing.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Base64.h"
#include "host/guard/Files.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"

namespace tarni::host {

namespace {

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
  const auto add = [&words](const char* word) { addWord(words, word, ","); };
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

Terminal::Row descriptionRow(const Json& element) {
  const auto& rectangle = objectIn(element, "rectangle");
  const auto number = [&rectangle](const char* key) {
    return std::to_string(std::lround(numberOfText(rectangle, key)));
  };
  return {textIn(element, "elementID"),
          textIn(element, "elementType"),
          number("x") + "," + number("y"),
          number("width") + "x" + number("height"),
          textIn(element, "childCount"),
          stateOf(element),
          Terminal::clipped(inQuotes(textIn(element, "text")), Terminal::kTextColumns)};
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

void writePictures(Invocation& invocation, const std::vector<Json>& elements,
                   const std::filesystem::path& folder) {
  makePrivateFolder(folder);
  std::size_t written = 0;
  for (const auto& element : elements) {
    try {
      const auto answer = invocation.ask("element.picture", {{"element", handleOf(element)}});
      const auto* const extension = textIn(answer, "format") == "jpeg" ? ".jpg" : ".png";
      writePrivateFile(folder / (std::to_string(handleOf(element)) + extension),
                       decodeBase64(textIn(answer, "data")));
      ++written;
    } catch (const RequestError&) {  // gone since, or of no size
    }
  }
  std::cerr << "tarni: " << written << " pictures in " << folder.string()
            << ", named as the elements\n";
}

void describeBySession(Invocation& invocation, const DescribeOptions& options) {
  Locator locator;
  locator.tag = options.tag;
  auto found = locator.elementsOnce(invocation);
  if (options.onScreen) {
    std::erase_if(found, [](const Json& element) { return !isTrue(element, "visible"); });
  }
  if (!invocation.printsAnswer({{"elements", found}}) && !found.empty()) printElements(found);
  if (!options.folder.empty()) writePictures(invocation, found, options.folder);
  if (found.empty()) throw NotFound("no " + locator.description() + " is there");
}

// All that is known of one.
void describeOne(Invocation& invocation, const std::string& handle) {
  const auto answer = invocation.ask("element.describe", {{"element", handleOf(handle)}});
  if (!invocation.printsAnswer(answer)) printMembers(objectIn(answer, "description"));
}

void describeByPort(Invocation& invocation, const DescribeOptions& options) {
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
    for (const auto& element : elements) rows.push_back(descriptionRow(element));
    Terminal::printTable(std::move(rows));
  }
  if (!options.folder.empty()) writePictures(elements, options.folder);
  if (elements.empty()) {
    throw NotFound("no " + (options.tag.empty() ? "element" : options.tag) + " is there");
  }
}

void describe(Invocation& invocation, const DescribeOptions& options) {
  const bool isHandle =
      !options.tag.empty() && options.tag.find_first_not_of("0123456789") == std::string::npos;
  if (!invocation.session()) {
    describeByPort(invocation, options);
  } else if (isHandle) {
    describeOne(invocation, options.tag);
  } else {
    describeBySession(invocation, options);
  }
}

}  // namespace

void declareDescribe(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<DescribeOptions>();
  auto* const tag =
      parser.add_option("--tag", options->tag, "only this class, as UIButton")->type_name("CLASS");
  parser
      .add_option("TAG", options->tag, "the same; or an identifier, for all that is known of it *")
      ->option_text(" ")
      ->excludes(tag);
  parser.footer(kNeedsSession);
  parser.add_flag("--on-screen", options->onScreen, kOnScreenHelp);
  parser.add_option("--images", options->folder, "write a picture of each into this folder")
      ->type_name("FOLDER");
  parser.callback([options, &invocation] { describe(invocation, *options); });
}

}  // namespace tarni::host
