#include "host/stream/Typing.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <thread>

#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/stream/ElementSearch.h"

namespace tarni::host {

namespace {

constexpr milliseconds kPauseBetweenAnswers{150};
constexpr milliseconds kTimeToTakeEffect{2000};

std::optional<std::string> ask(PlaybackClient& client, const char* function,
                               const std::string& id) {
  return client.call({function, "", "", id}).output();
}

bool isInPage(const std::string& id) {
  return id.starts_with("web-");
}

// Enter in a field of a page sends it off, and what it holds then is the page's affair.
bool isSentOff(const std::string& id, const std::string& text) {
  return isInPage(id) && text.ends_with('\n');
}

std::string sizeOf(PlaybackClient& client, const std::string& id) {
  return ask(client, "getwidth", id).value_or("") + "x" + ask(client, "getheight", id).value_or("");
}

// As the agent rounds it.
std::string sizeOf(const ElementOnScreen& element) {
  const auto rounded = [](double length) { return std::to_string(std::lrint(length)); };
  return rounded(element.rectangle.width) + "x" + rounded(element.rectangle.height);
}

std::string reasonOf(const ElementOnScreen& element) {
  if (!element.isEditable) {
    return "it takes no text by this command, only a UITextField does (as the one inside a spin "
           "box)";
  }
  return element.isEnabled ? "it is read-only or allows no such text" : "it is disabled";
}

}  // namespace

std::optional<std::string> awaitAnswer(PlaybackClient& client, const char* function,
                                       const std::string& id, const std::string& wanted) {
  const auto deadline = Clock::now() + kTimeToTakeEffect;
  while (true) {
    auto now = ask(client, function, id);
    if (!now || *now == wanted || Clock::now() >= deadline) return now;
    std::this_thread::sleep_for(kPauseBetweenAnswers);
  }
}

Typing::Typing(PlaybackClient& client, std::string id)
    : client_(client), id_(std::move(id)), before_(ask(client, "gettext", id_)) {}

Typing::Outcome Typing::outcome(const std::string& text) const {
  // An emptied field answers its placeholder.
  if (text.empty() || isSentOff(id_, text)) return {};
  const auto holds = awaitAnswer(client_, "gettext", id_, text);
  if (!holds) return {false, "gone since"};
  if (*holds == text) return {};
  if (holds == before_) return {true, whyNot() + "; it still holds " + inQuotes(*holds)};
  return {true, "typed " + inQuotes(text) + ", but it holds " + inQuotes(*holds)};
}

// An identifier does not tell what it names, but what is described is told by its text and size.
std::string Typing::whyNot() const {
  if (isInPage(id_)) return "it is disabled, read-only, no field, or allows no such text";
  const auto text = ask(client_, "gettext", id_);
  const auto size = sizeOf(client_, id_);
  std::set<std::string> reasons;
  for (const auto& description : client_.call({"ai_findelements"}).entries()) {
    const auto element = ElementOnScreen::fromJson(description);
    if (element.text == text && sizeOf(element) == size) {
      reasons.insert(reasonOf(element));
    }
  }
  return reasons.size() == 1 ? *reasons.begin()
                             : "it is disabled, read-only, no text field, or allows no such text";
}

}  // namespace tarni::host
