#include "host/session/Typing.h"

#include <thread>

#include "host/guard/Printable.h"

namespace tarni::host {

namespace {

constexpr milliseconds kPauseBetweenAnswers{150};
constexpr milliseconds kTimeToTakeEffect{2000};

std::optional<std::string> ask(PlaybackClient& client, const char* function,
                               const std::string& id) {
  return client.call({function, "", "", id}).output();
}

// Enter in a field of a page sends it off, and what it holds then is the page's affair.
bool isSentOff(const std::string& id, const std::string& text) {
  return id.starts_with("web-") && text.ends_with('\n');
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
  if (holds == before_) return {true, whyUnchanged() + ": it still holds " + inQuotes(*holds)};
  return {true, "typed " + inQuotes(text) + ", but it holds " + inQuotes(*holds)};
}

std::string Typing::whyUnchanged() const {
  if (ask(client_, "isenabled", id_) == "false") return "it is disabled and takes no text";
  return "it takes no text, as it is read-only or no text field (only a UITextField is one, such "
         "as "
         "the one inside a spin box)";
}

}  // namespace tarni::host
