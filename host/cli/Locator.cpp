#include "host/cli/Locator.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <thread>

#include "host/cli/Invocation.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

constexpr milliseconds kPauseBetweenSearches{100};

std::string withBackslashes(std::string xpath) {
  if (xpath.starts_with('/')) std::replace(xpath.begin(), xpath.end(), '/', '\\');
  return xpath;
}

}  // namespace

void Locator::declareSearch(CLI::App& parser) {
  auto* const text = parser.add_option("--text", text_, "its text is exactly this");
  auto* const partial = parser.add_option("--partial", partial_, "its text contains this");
  auto* const xpath = parser.add_option("--xpath", xpath_, "its position in the view tree");
  text->excludes(partial)->excludes(xpath);
  partial->excludes(xpath);
  auto* const inside =
      parser.add_option("--inside", inside_, "it is inside the element with this identifier")
          ->type_name("ID");
  parser.add_flag("--editable", editable_, "it is a text field")->excludes(inside);
}

void Locator::declare(CLI::App& parser) {
  declareSearch(parser);
  parser.add_option("--wait", waitSeconds_, "search again for so long until something is found")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
}

bool Locator::isGiven() const {
  return !tag.empty() || text_ || partial_ || xpath_ || !inside_.empty() || editable_;
}

std::string Locator::description() const {
  const bool anyTag = tag.empty() || tag == "*";
  std::string words = editable_ ? "text field" : anyTag ? "element" : tag;
  if (text_) words += " with the text " + inQuotes(*text_);
  if (partial_) words += " whose text contains " + inQuotes(*partial_);
  if (xpath_) words += " at " + withBackslashes(*xpath_);
  if (!inside_.empty()) words += " inside " + inside_;
  return words;
}

Answer Locator::findOnce(Invocation& invocation) const {
  PlaybackCommand command{"findelements", tag == "*" ? "" : tag};
  if (text_) {
    command.accessorType = "text";
    command.accessorValue = *text_;
  } else if (partial_) {
    command.accessorType = "partialtext";
    command.accessorValue = *partial_;
  } else if (xpath_) {
    command.accessorType = "xpath";
    command.accessorValue = withBackslashes(*xpath_);
  }
  if (editable_) command.functionName = "findeditablecomponents";
  if (!inside_.empty()) {
    command.functionName = "findelementsinsideelement";
    command.dataValue = inside_;
  }
  auto answer = invocation.call(command);
  if (!answer.elementIds().empty() || !inside_.empty()) return answer;
  command.window = kAnyWindow;
  return invocation.call(command);
}

Answer Locator::find(Invocation& invocation) const {
  const auto deadline = Clock::now() + fromSeconds(waitSeconds_);
  while (true) {
    auto answer = findOnce(invocation);
    if (!answer.elementIds().empty() || Clock::now() >= deadline) return answer;
    std::this_thread::sleep_for(kPauseBetweenSearches);
  }
}

void Target::declare(CLI::App& parser, const std::string& others) {
  locator_.declare(parser);
  parser.add_option("--tag", locator_.tag, "its class, as UIButton")->type_name("CLASS");
  auto* const first = parser.add_flag("--first", first_, "the first one when several fit");
  parser.add_option("--nth", nth_, "the N-th one when several fit, from 1")
      ->type_name("N")
      ->check(CLI::PositiveNumber.description(""))
      ->excludes(first);
  const auto usage = others.empty() ? "ID" : "ID " + others;
  parser.add_option(usage, arguments_, "the element's identifier, unless options say what it is")
      ->option_text(" ");
}

bool Target::isGiven() const {
  return locator_.isGiven();
}

std::string Target::resolve(Invocation& invocation, std::size_t others) const {
  const auto expected = others + (isGiven() ? 0 : 1);
  if (arguments_.size() != expected) {
    throw std::invalid_argument(
        arguments_.size() > expected
            ? "too many arguments: an element is named by its identifier or by options, not both"
            : "which element? Give its identifier, or --text, --partial, --xpath or --tag");
  }
  if (isGiven()) return choose(locator_.find(invocation).elementIds());
  const auto& id = arguments_.front();
  if (invocation.call({"gettext", "", "", id}).text() == "[]") {
    throw NotFound("no element has the identifier " + id +
                   ": it is of a former find, or the element is gone");
  }
  return id;
}

std::string Target::description() const {
  return isGiven() ? locator_.description() : arguments_.front();
}

std::vector<std::string> Target::others() const {
  return {arguments_.begin() + (isGiven() || arguments_.empty() ? 0 : 1), arguments_.end()};
}

std::string Target::choose(const std::vector<std::string>& found) const {
  if (found.empty()) throw NotFound("no " + locator_.description() + " is on screen");
  const auto wanted = first_ ? 1 : nth_.value_or(0);
  if (wanted > found.size()) {
    throw NotFound("only " + std::to_string(found.size()) + " of " + locator_.description() +
                   " are on screen");
  }
  if (wanted == 0 && found.size() > 1) {
    throw NotFound(std::to_string(found.size()) + " elements fit " + locator_.description() +
                   ": say more, or choose with --first or --nth");
  }
  return found[wanted == 0 ? 0 : wanted - 1];
}

}  // namespace tarni::host
