#include "host/webdriver/Finding.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <string_view>
#include <thread>

#include "host/guard/Clock.h"
#include "host/source/ClassChain.h"
#include "host/source/Css.h"
#include "host/source/Predicate.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Screen.h"

namespace tarni::host::webdriver {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPauseBetweenSearches{50};

Selector one(Selector::Member Selector::*member, const std::string& value) {
  Selector selector;
  selector.*member = value;
  return selector;
}

Query byIdentifier(const std::string& value) {
  return Selectors{one(&Selector::identifier, value)};
}

// What a person who sees nothing is told counts as a name.
Query byName(const std::string& value) {
  return Selectors{one(&Selector::identifier, value), one(&Selector::label, value)};
}

// That very class or, where there is none of it, what is a kind of it.
Query byClass(const std::string& value) {
  if (value == "*") return Selectors{one(&Selector::textContains, "")};
  return Selectors{one(&Selector::className, value), one(&Selector::kind, value)};
}

Query byText(const std::string& value) {
  return Selectors{one(&Selector::text, value)};
}

Query byPartOfText(const std::string& value) {
  return Selectors{one(&Selector::textContains, value)};
}

Query byXPath(const std::string& value) {
  SourceTree(Json::array())
      .find(value);  // says what is wrong with it before anything is waited for
  return [value](const SourceTree& tree, std::optional<long> within) {
    return tree.find(value, within);
  };
}

Query byCss(const std::string& value) {
  auto css = Css::parse(value);
  return css.selectors.empty() ? byXPath(css.xpath) : Query(std::move(css.selectors));
}

Query byPredicate(const std::string& value) {
  return [predicate = parsePredicate(value)](const SourceTree& tree, std::optional<long> within) {
    std::vector<long> found;
    for (const long handle : tree.find(".//*", within)) {
      if (predicate(tree.node(handle))) found.push_back(handle);
    }
    return found;
  };
}

Query byClassChain(const std::string& value) {
  findByClassChain(SourceTree(Json::array()), value, std::nullopt);
  return [value](const SourceTree& tree, std::optional<long> within) {
    return findByClassChain(tree, value, within);
  };
}

struct Strategy {
  std::string_view name;
  Query (*query)(const std::string& value);
};

constexpr Strategy kStrategies[] = {
    {"accessibility id", byName},
    {"id", byIdentifier},
    {"name", byName},
    {"class name", byClass},
    {"tag name", byClass},
    {"css selector", byCss},
    {"link text", byText},
    {"partial link text", byPartOfText},
    {"xpath", byXPath},
    {"-ios predicate string", byPredicate},
    {"-ios class chain", byClassChain},
};

Json told(Session& session, const Selector& selector, std::optional<long> within,
          std::size_t most) {
  auto parameters = selector.parameters();
  if (within) parameters["within"] = *within;
  if (most > 0) parameters["limit"] = most;
  return session.call("element.find", std::move(parameters)).value("elements", Json::array());
}

std::vector<long> answered(Session& session, const Selector& selector, std::optional<long> within,
                           std::size_t most) {
  Json elements = told(session, selector, within, most);
  std::stable_partition(elements.begin(), elements.end(),
                        [](const Json& one) { return one.value("visible", true); });
  std::vector<long> handles;
  for (const auto& element : elements) handles.push_back(handleOf(element));
  return handles;
}

// What can be seen comes first: of few, they are looked for on their own.
std::vector<long> found(Session& session, const Selectors& selectors, std::optional<long> within,
                        std::size_t most) {
  std::vector<long> handles;
  for (const auto& selector : selectors) {
    auto seen = selector;
    seen.isVisible = true;
    if (most > 0) handles = answered(session, seen, within, most);
    if (handles.empty()) handles = answered(session, selector, within, most);
    if (!handles.empty()) break;
  }
  return handles;
}

std::vector<long> found(Session& session, const TreeSearch& search, std::optional<long> within,
                        std::size_t most) {
  const auto& tree = session.source();
  // An element of a page is not in it, and one that is gone is told of.
  if (within && !tree.node(within)) {
    session.described(*within);
    return {};
  }
  auto handles = search(tree, within);
  tree.putSeenFirst(handles);
  if (most > 0 && handles.size() > most) handles.resize(most);
  return handles;
}

// The program tells last of the windows that a modal one keeps the person from, and takes a class
// in any case.
std::vector<long> found(Session& session, const Numbered& numbered, std::optional<long> within,
                        std::size_t most) {
  const Selector& selector = numbered.wanted.selector;
  const std::size_t number = numbered.wanted.number;
  const auto windows = Screen(session).arrangement();
  const bool isInOrder = std::ranges::all_of(windows, &SourceTree::Window::takesInput);
  const Json elements = isInOrder ? told(session, selector, within, number) : Json::array();
  const bool isOfThatClass = std::ranges::all_of(
      elements, [&](const Json& one) { return textIn(one, "class") == selector.className; });
  if (!isInOrder || !isOfThatClass) return found(session, numbered.inTree, within, most);
  if (elements.size() < number) return {};
  return {handleOf(elements[number - 1])};
}

// Until something may have come.
void pause(Session& session, const Query& query, milliseconds left) {
  const auto* const selectors = std::get_if<Selectors>(&query);
  if (selectors == nullptr || selectors->size() != 1) {
    std::this_thread::sleep_for(std::min(left, kPauseBetweenSearches));
    return;
  }
  const Json condition = {{"find", selectors->front().parameters()}, {"is", "there"}};
  try {
    session.call("wait.for", {{"conditions", Json::array({condition})}}, left);
  } catch (const Error& error) {
    if (error.name() != "timeout") throw;
  }
}

}  // namespace

Query queryFor(const std::string& strategy, const std::string& value, bool isBelow) {
  const auto* const known = std::ranges::find(kStrategies, strategy, &Strategy::name);
  if (known == std::end(kStrategies)) {
    throw Error("invalid selector", "nothing is found here by \"" + strategy + "\"");
  }
  auto query = known->query(value);
  const bool isXPathOfRoot = known->query == byXPath && !isBelow;
  if (!isXPathOfRoot) return query;
  if (const auto selector = selectorIn(value)) return Selectors{*selector};
  const auto numbered = numberedSelectorIn(value);
  return numbered ? Numbered{*numbered, std::get<TreeSearch>(query)} : query;
}

std::vector<long> search(Session& session, const Query& query, std::optional<long> within,
                         std::size_t most) {
  const auto deadline = deadlineIn(session.timeouts.implicit);
  while (true) {
    auto handles =
        std::visit([&](const auto& how) { return found(session, how, within, most); }, query);
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    if (!handles.empty() || left.count() <= 0) return handles;
    pause(session, query, left);
  }
}

}  // namespace tarni::host::webdriver
