#include "host/cli/Locator.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <iostream>
#include <thread>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/NearMiss.h"
#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

constexpr milliseconds kPauseBetweenSearches{100};
// The longest that the program waits for the element itself: what a condition does not tell, as a
// text that is a label, is looked for in between.
constexpr milliseconds kLongestWait{200};

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
  parser.add_option("--identifier", selector_.identifier, "its accessibility identifier *");
  parser.add_option("--label", selector_.label, "its accessibility label *");
  parser.add_option("--placeholder", selector_.placeholder, "what the empty field asks for *");
  parser.add_option("--kind", selector_.kind, "its class or one that it is a kind of *")
      ->type_name("CLASS");
  parser.add_option("--select", chain_, "as 'kind=UITableView >> text=Row 3' *")
      ->type_name("SELECTOR");
}

void Locator::declare(CLI::App& parser) {
  declareSearch(parser);
  parser.add_option("--wait", waitSeconds_, "search again for so long until something is found")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
}

bool Locator::isGiven() const {
  return !tag.empty() || text_ || partial_ || xpath_ || !inside_.empty() || editable_ ||
         !selector_.isEmpty() || !chain_.empty();
}

std::string Locator::description() const {
  return (kind().empty() ? "element" : kind()) + looks();
}

void Locator::refuse(Invocation& invocation) const {
  auto why = "no " + description() + " is on screen";
  if (auto* const session = invocation.session()) {
    const auto chain = this->chain();
    const bool isAlone = chain.size() == 1 && inside_.empty();
    if (isAlone) why += nearMissOf(*session, chain.back());
  }
  throw NotFound(why);
}

std::string Locator::several(std::size_t count) const {
  const bool isOne = count == 1 && !editable_ && kind().empty();
  const std::string many = editable_ ? "text fields" : kind().empty() ? "elements" : kind();
  return (isOne ? counted(1, "element") : std::to_string(count) + " " + many) + looks();
}

std::string Locator::kind() const {
  return editable_ ? "text field" : tag == "*" ? "" : tag;
}

std::string Locator::looks() const {
  std::string words;
  if (text_) words += " with the text " + inQuotes(*text_);
  if (partial_) words += " whose text contains " + inQuotes(*partial_);
  if (xpath_) words += " at " + withBackslashes(*xpath_);
  if (!inside_.empty()) words += " inside " + inside_;
  for (const auto& said : {selector_.written(), chain_}) {
    if (!said.empty()) words += " of " + inQuotes(said);
  }
  return words;
}

Answer Locator::findOnce(Invocation& invocation) const {
  requireNothingOfTheSession();
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

void Locator::requireNothingOfTheSession() const {
  if (selector_.isEmpty() && chain_.empty()) return;
  throw std::invalid_argument(
      "--identifier, --label, --placeholder, --kind and --select take the session channel");
}

SelectorChain Locator::chain() const {
  auto chain = chain_.empty() ? SelectorChain() : parseChain(chain_);
  auto last = selector_;
  if (!tag.empty() && tag != "*") last.className = tag;
  last.text = text_;
  last.textContains = partial_;
  if (xpath_) last.xpath = withBackslashes(*xpath_);
  if (chain.empty() && last.isEmpty()) last.textContains = "";  // which is part of every text
  if (!last.isEmpty()) chain.push_back(std::move(last));
  return chain;
}

std::optional<long> Locator::within() const {
  return inside_.empty() ? std::nullopt : std::optional(handleOf(inside_));
}

std::vector<Json> Locator::elementsOnce(Invocation& invocation) const {
  auto& session = invocation.needSession();
  const auto chain = this->chain();
  auto found = findAll(session, chain, within());
  const auto& last = chain.back();
  for (const auto instead : {&Selector::placeholder, &Selector::label}) {
    if (!found.empty() || !last.text || last.*instead) continue;
    auto other = chain;
    other.back().text.reset();
    other.back().*instead = last.text;
    found = findAll(session, other, within());
  }
  if (editable_)
    std::erase_if(found, [](const Json& element) { return !isTrue(element, "editable"); });
  return found;
}

void Locator::pause(Invocation& invocation, bool gone, Deadline deadline) const {
  auto condition = Json{{"find", chain().front().parameters()}, {"is", gone ? "gone" : "there"}};
  const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
  const auto start = Clock::now();
  const auto wait = std::clamp(left, milliseconds(1), kLongestWait);
  if (!invocation.needSession().comesTrue(condition, wait)) return;
  // It held at once, and was not enough.
  constexpr milliseconds kShort{20};
  if (Clock::now() - start < kShort) std::this_thread::sleep_for(kShort);
}

bool Locator::await(Invocation& invocation, bool gone, Deadline deadline) const {
  const auto soon = Clock::now() + kPatienceOfPeople;
  bool isSaid = false;
  while (elementsOnce(invocation).empty() != gone) {
    if (Clock::now() >= deadline) return false;
    if (!isSaid && Clock::now() >= soon) {
      std::cerr << "tarni: waits for " << description() << (gone ? " to go" : "") << std::endl;
      isSaid = true;
    }
    pause(invocation, gone, deadline);
  }
  return true;
}

std::vector<Json> Locator::elements(Invocation& invocation) const {
  if (waitSeconds_ > 0) await(invocation, false, Clock::now() + fromSeconds(waitSeconds_));
  return elementsOnce(invocation);
}

void Target::declare(CLI::App& parser, const std::string& others) {
  locator_.declare(parser);
  parser.add_option("--tag,--class", locator_.tag, "its class, as UIButton")->type_name("CLASS");
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

bool Target::isNamed(std::size_t others) const {
  return isGiven() || arguments_.size() > others;
}

void Target::requireArguments(std::size_t others) const {
  const auto expected = others + (isGiven() ? 0 : 1);
  if (arguments_.size() == expected) return;
  throw std::invalid_argument(
      arguments_.size() > expected
          ? "too many arguments: an element is named by its identifier or by options, not both"
          : "which element? Give its identifier, or --text, --partial, --xpath or --tag");
}

std::string Target::resolve(Invocation& invocation, std::size_t others) const {
  requireArguments(others);
  if (isGiven()) return choose(invocation, locator_.find(invocation).elementIds());
  const auto& id = arguments_.front();
  if (invocation.call({"gettext", "", "", id}).text() == "[]") {
    throw NotFound("no element has the identifier " + id +
                   ": it is of a former find, the element is gone, or it is a text (--text)");
  }
  return id;
}

Json Target::described(Invocation& invocation, std::size_t others) const {
  requireArguments(others);
  if (isGiven()) return choose(invocation, locator_.elements(invocation));
  return invocation.described(handleOf(arguments_.front()));
}

long Target::element(Invocation& invocation, std::size_t others) const {
  requireArguments(others);
  return isGiven() ? handleOf(choose(invocation, locator_.elements(invocation)))
                   : handleOf(arguments_.front());
}

std::string Target::description() const {
  return isGiven() ? locator_.description() : arguments_.front();
}

std::vector<std::string> Target::others() const {
  return {arguments_.begin() + (isGiven() || arguments_.empty() ? 0 : 1), arguments_.end()};
}

std::optional<std::size_t> Target::chosen(std::size_t count) const {
  const auto wanted = first_ ? 1 : nth_.value_or(0);
  if (wanted > count) {
    throw NotFound("there is no such one: the screen shows " + locator_.several(count));
  }
  if (wanted == 0 && count > 1) return std::nullopt;
  return wanted == 0 ? 0 : wanted - 1;
}

void Target::refuseSeveral(std::size_t count) const {
  throw NotFound(locator_.several(count) + " fit: say more, or " +
                 (hasOptions_ ? "choose with --first or --nth" : "give its identifier"));
}

std::string Target::choose(Invocation& invocation, const std::vector<std::string>& found) const {
  if (found.empty()) locator_.refuse(invocation);
  const auto place = chosen(found.size());
  if (!place) refuseSeveral(found.size());
  return found[*place];
}

Json Target::choose(Invocation& invocation, std::vector<Json> found) const {
  if (found.empty()) locator_.refuse(invocation);
  const auto has = [](const char* member) {
    return [member](const Json& element) { return isTrue(element, member); };
  };
  const bool isHidden = std::ranges::none_of(found, has("visible"));
  if (!isHidden) std::erase_if(found, std::not_fn(has("visible")));
  if (const auto place = chosen(found.size())) return std::move(found[*place]);
  // The label that lies in a button is not meant when that is there.
  const auto enabled = std::ranges::find_if(found, has("enabled"));
  if (std::ranges::count_if(found, has("enabled")) == 1) return std::move(*enabled);
  addWindows(invocation, std::span(found).first(std::min(found.size(), kMostListed)));
  printDifferences(found, hasOptions_);
  if (isHidden) std::cerr << "None of them is visible.\n";
  refuseSeveral(found.size());
}

}  // namespace tarni::host
