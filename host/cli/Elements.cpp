#include "host/cli/Elements.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <nlohmann/json.hpp>

#include "host/cli/ExitCode.h"
#include "host/cli/Invocation.h"
#include "host/cli/Terminal.h"
#include "host/guard/Printable.h"
#include "host/guard/Text.h"
#include "host/guard/Words.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

constexpr auto kWindowTitle = "windowTitle";

std::string roundedIn(const Json& rectangle, const char* key) {
  const auto found = rectangle.find(key);
  const bool isNumber = found != rectangle.end() && found->is_number();
  return isNumber ? std::to_string(std::lround(found->get<double>())) : "?";
}

std::string pairIn(const Json& description, const char* member, const char* first,
                   const char* between, const char* second) {
  const Json& rectangle = objectIn(description, member);
  if (rectangle.empty()) return "";
  return roundedIn(rectangle, first) + between + roundedIn(rectangle, second);
}

std::string quoted(const Json& description, const char* member) {
  const auto value = valueIn(description, member);
  return value ? Terminal::clipped(inQuotes(*value), Terminal::kTextColumns) : "";
}

// Its title; several may have the same, and a menu has none.
std::string nameOf(const Json& window, const std::vector<Json>& all) {
  const auto title = textIn(window, "title");
  const auto hasTitle = [&title](const Json& one) { return textIn(one, "title") == title; };
  if (std::ranges::count_if(all, hasTitle) == 1 && !title.empty()) return title;
  return title + (title.empty() ? "(" : " (") + valueIn(window, "element").value_or("?") + ")";
}

const Terminal::Row kHeading = {"ID",   "CLASS",      "AT",    "SIZE", "STATE",
                                "TEXT", "IDENTIFIER", "LABEL", "HINT", "WINDOW"};

Terminal::Row rowOf(const Json& element) {
  const auto text = quoted(element, "text");
  const auto unlessText = [&](const char* member) {
    const auto value = quoted(element, member);
    return value == text ? "" : value;
  };
  return {valueIn(element, "element").value_or("?"),
          valueIn(element, "class").value_or("?"),
          placeIn(element),
          sizeIn(element),
          stateIn(element),
          valueIn(element, "text").value_or("").empty() ? quoted(element, "placeholder") : text,
          quoted(element, "identifier"),
          unlessText("label"),
          unlessText("hint"),
          quoted(element, kWindowTitle)};
}

// Leaves out the columns of which `isNeeded` (given the column without its heading) says no.
template <typename IsNeeded>
std::vector<Terminal::Row> columnsOf(const std::vector<Terminal::Row>& rows,
                                     const IsNeeded& isNeeded) {
  std::vector<Terminal::Row> kept(rows.size());
  for (std::size_t column = 0; column < kHeading.size(); ++column) {
    std::vector<std::string> cells;
    for (std::size_t row = 1; row < rows.size(); ++row) cells.push_back(rows[row][column]);
    if (!isNeeded(column, cells)) continue;
    for (std::size_t row = 0; row < rows.size(); ++row) kept[row].push_back(rows[row][column]);
  }
  return kept;
}

}  // namespace

bool isHandle(const std::string& word) {
  return !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
}

long handleOf(const std::string& word) {
  if (const auto handle = wholeNumberIn<long>(word)) return *handle;
  throw NotFound("no element has the identifier " + word +
                 ": they are numbers, as `tarni find` prints them. By " +
                 (word.starts_with("UI") ? "its class: --tag " : "what it shows: --text ") +
                 inQuotes(word));
}

long handleOf(const Json& description) {
  const auto value = valueIn(description, "element");
  if (!value) throw WireError("the program described an element without its handle");
  return handleOf(*value);
}

std::string sizeIn(const Json& description, const char* rectangle) {
  return pairIn(description, rectangle, "width", "x", "height");
}

std::string placeIn(const Json& description, const char* rectangle) {
  return pairIn(description, rectangle, "x", ",", "y");
}

std::string stateIn(const Json& description) {
  struct Word {
    const char* member;
    bool value;
    const char* word;
  };
  constexpr Word kWords[] = {
      {"visible", false, "hidden"},
      {"enabled", false, "disabled"},
      {"checked", true, "checked"},
      {"checked", false, "unchecked"},
      {"selected", true, "selected"},
      {"expanded", true, "expanded"},
      {"expanded", false, "collapsed"},
      {"focused", true, "focused"},
      {"editable", true, "editable"},
      {"secure", true, "secure"},
      {"modal", true, "modal"},
      {"popup", true, "popup"},
      {"key", true, "key"},
      {"takesInput", false, "blocked"},
  };
  std::string words;
  for (const auto& [member, value, word] : kWords) {
    const auto found = description.find(member);
    if (found == description.end() || *found != value) continue;
    addWord(words, word, ",");
  }
  return words;
}

void addWindows(Invocation& invocation, std::span<Json> elements) {
  const auto windows = invocation.ask("window.list").value("windows", std::vector<Json>());
  if (windows.size() < 2) return;
  for (auto& element : elements) {
    const auto window = valueIn(invocation.described(handleOf(element)), "window");
    const auto its = std::ranges::find_if(
        windows, [&](const Json& one) { return valueIn(one, "element") == window; });
    if (its != windows.end()) element[kWindowTitle] = nameOf(*its, windows);
  }
}

void printElements(const std::vector<Json>& elements) {
  std::vector<Terminal::Row> rows{kHeading};
  for (const auto& element : elements) rows.push_back(rowOf(element));
  constexpr std::size_t kAlways = 6;
  Terminal::printTable(columnsOf(rows, [](std::size_t column, const auto& cells) {
    return column < kAlways || std::ranges::any_of(cells, [](auto& cell) { return !cell.empty(); });
  }));
}

void printDifferences(const std::vector<Json>& elements, bool areNumbered) {
  std::vector<Terminal::Row> rows{kHeading};
  for (const auto& element : elements) {
    if (rows.size() <= kMostListed) rows.push_back(rowOf(element));
  }
  auto telling = columnsOf(rows, [](std::size_t, const auto& cells) {
    return std::ranges::any_of(cells, [&cells](auto& cell) { return cell != cells.front(); });
  });
  for (std::size_t row = 0; areNumbered && row < telling.size(); ++row) {
    telling[row].insert(telling[row].begin(), row == 0 ? "--nth" : std::to_string(row));
  }
  Terminal::printTable(std::move(telling), std::cerr);
  if (elements.size() > kMostListed) std::cerr << "…\n";
}

void printMembers(const Json& object) {
  for (const auto& [name, value] : object.items()) {
    std::cout << Terminal::strong(printable(name)) << "  "
              << (value.is_string() ? inQuotes(value.get<std::string>())
                                    : printableJson(compact(value)))
              << '\n';
  }
}

}  // namespace tarni::host
