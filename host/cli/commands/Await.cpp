#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <thread>

#include "host/cli/Elements.h"
#include "host/cli/Invocation.h"
#include "host/cli/NearMiss.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Printable.h"
#include "host/guard/Text.h"
#include "host/guard/Words.h"
#include "host/session_client/Selector.h"

namespace tarni::host {

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

struct AwaitOptions {
  Json conditions = Json::array();
  std::vector<std::function<void()>> later;  // conditions that take the connection
  double restMilliseconds = 0;
  double timeout = 10;
};

// What a condition is about: an element of that handle, or what looks so.
Json subjectOf(Invocation& invocation, const std::string& word) {
  if (isHandle(word)) return {{"element", handleOf(word)}};
  auto chain = parseChain(word);
  auto selector = chain.back().parameters();
  chain.pop_back();
  if (!chain.empty()) {
    const auto parents = findAll(invocation.needSession(), chain);
    if (parents.size() != 1) {
      throw NotFound(
          (parents.empty() ? "nothing fits " : counted(parents.size(), "element") + " fit ") +
          written(chain) + ", in which to look");
    }
    selector["within"] = handleOf(parents.front());
  }
  return {{"find", std::move(selector)}};
}

std::size_t countFrom(const std::string& text) {
  if (const auto count = wholeNumberIn<std::size_t>(text)) return *count;
  throw std::invalid_argument("\"" + text + "\" is no number of elements");
}

std::string inWords(const Json& condition) {
  std::string words;
  for (const auto& [name, value] : condition.items()) {
    const auto& text = value.is_object() ? Selector::fromParameters(value).written()
                                         : valueIn(condition, name.c_str()).value_or("");
    addWord(words, printable(name + " " + text), " ");
  }
  return words;
}

std::string windowsIn(const Json& told) {
  const auto windows = told.find("windows");
  if (windows == told.end() || !windows->is_array()) return "";
  std::string titles;
  for (const auto& title : *windows) {
    if (title.is_string()) addWord(titles, inQuotes(title.get<std::string>()));
  }
  return "; there is " + (titles.empty() ? "no window with a title" : titles);
}

std::string nearMissIn(Invocation& invocation, const Json& told) {
  const auto& find = objectIn(objectIn(told, "condition"), "find");
  if (find.empty() || isTrue(told, "holds") || valueIn(told, "found") != "0") return "";
  return nearMissOf(invocation.needSession(), Selector::fromParameters(find));
}

void sayInstead(Invocation& invocation, const Json& data) {
  const auto told = data.find("conditions");
  if (told == data.end() || !told->is_array()) return;
  for (const auto& one : *told) {
    std::cerr << "  " << (isTrue(one, "holds") ? "holds: " : "does not: ")
              << inWords(objectIn(one, "condition"));
    if (const auto count = valueIn(one, "found")) std::cerr << "; found " << printable(*count);
    const auto elements = one.find("elements");
    if (elements != one.end() && elements->is_array()) {
      for (const auto& element : *elements) {
        std::cerr << (&element == &elements->front() ? ": " : ", ")
                  << inQuotes(valueIn(element, "text").value_or(""));
        const auto state = stateIn(element);
        if (!state.empty()) std::cerr << " (" << state << ")";
      }
    }
    std::cerr << windowsIn(one) << nearMissIn(invocation, one) << '\n';
  }
}

void call(Invocation& invocation, const char* method, const Json& parameters, Deadline deadline) {
  const auto soon = std::min<Deadline>(deadline, Clock::now() + kPatienceOfPeople);
  for (const auto until : {soon, deadline}) {
    const auto left = std::chrono::ceil<milliseconds>(until - Clock::now());
    try {
      const auto answer =
          invocation.needSession().call(method, parameters, std::max(left, milliseconds(1)));
      invocation.printsAnswer(answer);
      return;
    } catch (const RequestError& error) {
      if (error.name() != "timeout") throw;
      const bool isOver = until == deadline || Clock::now() >= deadline;
      if (!isOver) std::cerr << "tarni: still waits:" << '\n';
      sayInstead(invocation, error.data());
      if (isOver) throw NotFound(printable(error.what()));
    }
  }
}

// What stands in something may have to wait for that.
void addConditions(AwaitOptions& options, Deadline deadline) {
  constexpr milliseconds kPause{100};
  while (true) {
    try {
      options.conditions = Json::array();
      for (const auto& add : options.later) add();
      return;
    } catch (const NotFound&) {
      if (Clock::now() >= deadline) throw;
    }
    std::this_thread::sleep_for(kPause);
  }
}

void await(Invocation& invocation, AwaitOptions& options) {
  if (options.later.empty() && options.restMilliseconds <= 0) {
    throw std::invalid_argument("wait for what? --visible, --gone, --rest and so on say it");
  }
  const auto deadline = Clock::now() + fromSeconds(options.timeout);
  invocation.awaitSession(deadline);
  addConditions(options, deadline);
  if (!options.conditions.empty()) {
    call(invocation, "wait.for", {{"conditions", options.conditions}}, deadline);
  }
  if (options.restMilliseconds > 0) {
    call(invocation, "wait.rest", {{"quiet", options.restMilliseconds}}, deadline);
  }
}

void addLater(AwaitOptions& options, Invocation& invocation, const std::string& word,
              const char* name, const Json& value) {
  options.later.emplace_back([=, &options, &invocation] {
    auto condition = subjectOf(invocation, word);
    condition[name] = value;
    options.conditions.push_back(std::move(condition));
  });
}

// An option with one word, which may be given again.
void declareEach(CLI::App& parser, const char* option, const char* type, const char* help,
                 const std::function<void(const std::string&)>& take) {
  const auto takeAll = [take](const std::vector<std::string>& words) {
    for (const auto& word : words) take(word);
  };
  parser.add_option_function<std::vector<std::string>>(option, takeAll, help)
      ->type_name(type)
      ->expected(1)
      ->take_all();
}

void declareStates(CLI::App& parser, AwaitOptions& options, Invocation& invocation) {
  struct State {
    const char* option;
    const char* state;
    const char* help;
  };
  constexpr State kStates[] = {
      {"--there", "there", "it is there"},          {"--gone", "gone", "it is there no more"},
      {"--visible", "visible", "it is to be seen"}, {"--enabled", "enabled", "it is enabled"},
      {"--disabled", "disabled", "it is disabled"}, {"--checked", "checked", "it is checked"},
      {"--unchecked", "unchecked", "it is not"},    {"--focused", "focused", "it has the keyboard"},
  };
  for (const auto& [option, state, help] : kStates) {
    declareEach(parser, option, "ELEMENT", help,
                [&options, &invocation, state = state](const std::string& word) {
                  addLater(options, invocation, word, "is", state);
                });
  }
}

void declareTexts(CLI::App& parser, AwaitOptions& options, Invocation& invocation) {
  using Valued = Json (*)(const std::string& text);
  const auto declare = [&](const char* option, const char* type, const char* help, const char* name,
                           Valued valueOf) {
    const auto takeAll = [&options, &invocation, name, valueOf](const Pairs& pairs) {
      for (const auto& [word, text] : pairs) {
        addLater(options, invocation, word, name, valueOf(text));
      }
    };
    parser.add_option_function<Pairs>(option, takeAll, help)->type_name(type)->take_all();
  };
  const Valued asItIs = [](const std::string& text) -> Json { return text; };
  const Valued asNumber = [](const std::string& text) -> Json { return countFrom(text); };
  declare("--text-is", "ELEMENT TEXT", "its text is this", "textIs", asItIs);
  declare("--text-contains", "ELEMENT TEXT", "its text contains this", "textContains", asItIs);
  declare("--count", "ELEMENT N", "so many fit", "count", asNumber);
}

void declareTitles(CLI::App& parser, AwaitOptions& options) {
  const auto declare = [&](const char* option, const char* state, const char* help) {
    declareEach(parser, option, "TITLE", help, [&options, state](const std::string& title) {
      options.later.emplace_back([&options, state, title] {
        options.conditions.push_back({{"window", title}, {"is", state}});
      });
    });
  };
  declare("--window", "there", "a window with this in its title is there");
  declare("--no-window", "gone", "none is");
}

void declareTimes(CLI::App& parser, AwaitOptions& options) {
  parser
      .add_option("--rest", options.restMilliseconds,
                  "then, nothing is handled for so long (default 100)")
      ->type_name("[MILLISECONDS]")
      ->expected(0, 1)
      ->default_str("100");
  parser.add_option("--timeout", options.timeout, "how long to wait (default 10)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
}

}  // namespace

void declareAwait(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<AwaitOptions>();
  declareStates(parser, *options, invocation);
  declareTexts(parser, *options, invocation);
  declareTitles(parser, *options);
  declareTimes(parser, *options);
  parser.footer(
      "All must hold at the same moment. ELEMENT is an identifier (12) or what it looks like "
      "(Saved,\n"
      "\"kind=UILabel && text=Saved\"). What is there instead is said when the time is up.");
  parser.callback([options, &invocation] { await(invocation, *options); });
}

}  // namespace tarni::host
