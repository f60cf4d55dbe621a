#include "host/player/JUnit.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "host/guard/Printable.h"
#include "host/guard/Text.h"

namespace tarni::host {

namespace {

std::string attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + asMarkup(printable(value)) + '"';
}

std::string inSecondsOf(double value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.3f", value);
  return text.data();
}

std::string testCase(const std::string& suite, const Step& step, const Played& played) {
  const auto name = std::to_string(played.number) + " " + step.inWords();
  const auto head = "    <testcase" + attribute("classname", suite) + attribute("name", name) +
                    attribute("time", inSecondsOf(played.seconds));
  if (played.result == Played::Result::NotPlayed) return head + "><skipped/></testcase>\n";
  if (!played.hasFailed()) return head + "/>\n";
  return head + "><failure" + attribute("message", played.message) + "/></testcase>\n";
}

std::string suiteOf(const std::string& name, const Session& session,
                    const std::vector<Played>& plays) {
  const auto failures = std::ranges::count_if(plays, &Played::hasFailed);
  const auto skipped = std::ranges::count(plays, Played::Result::NotPlayed, &Played::result);
  double seconds = 0;
  std::string cases;
  for (std::size_t i = 0; i < plays.size(); ++i) {
    seconds += plays[i].seconds;
    cases += testCase(name, session.steps()[i], plays[i]);
  }
  return "  <testsuite" + attribute("name", name) +
         attribute("tests", std::to_string(plays.size())) +
         attribute("failures", std::to_string(failures)) +
         attribute("skipped", std::to_string(skipped)) + attribute("time", inSecondsOf(seconds)) +
         ">\n" + cases + "  </testsuite>\n";
}

}  // namespace

std::string junitXml(const std::string& name, const Session& session,
                     std::span<const std::vector<Played>> plays) {
  std::string suites;
  for (std::size_t i = 0; i < plays.size(); ++i) {
    const auto turn = plays.size() > 1 ? " " + std::to_string(i + 1) : "";
    suites += suiteOf(name + turn, session, plays[i]);
  }
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n" + suites + "</testsuites>\n";
}

}  // namespace tarni::host
