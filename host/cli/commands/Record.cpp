#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "host/cli/Invocation.h"
#include "host/cli/Listening.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Files.h"
#include "host/guard/Json.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/session/Session.h"
#include "host/session/StartLine.h"
#include "host/stream/StreamSession.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

struct RecordOptions {
  Listening listening;
  std::string file;
  std::string program;
  std::string checkKey;
};

Json argument(const Json& step, std::size_t index) {
  const auto arguments = step.value("arguments", Json::array());
  return arguments.is_array() && index < arguments.size() ? arguments[index] : Json::object();
}

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

// "ClickButton          UIButton "OK"  \UIView[0]\UIButton[1]"
void printStep(const Json& step) {
  const auto object = argument(step, 0);
  const auto data = textIn(argument(step, 1), "data");
  const auto action = printable(textIn(step, "action"));
  std::cout << padded(action.empty() ? "(element)" : action, 22) << " "
            << Terminal::strong(printable(textIn(object, "className")));
  const auto text = textIn(object, "sahiText");
  if (!text.empty()) std::cout << " " << inQuotes(text);
  if (!data.empty()) std::cout << " <- " << inQuotes(data);
  std::cout << "  " << Terminal::faint(printable(textIn(object, "xpath:position"))) << '\n';
}

// The program's start-up line: as a person gives it, else as the kernel knows it.
std::vector<std::string> startLine(const Invocation& invocation, const RecordOptions& options) {
  if (!options.program.empty()) return wordsOf(options.program);
  const auto program = invocation.program(invocation.recorderPort());
  return program ? startLineOf(*program) : std::vector<std::string>();
}

// What the recorder port tells.
class StreamRecording {
 public:
  // `program` is the start-up line to keep.
  StreamRecording(const Invocation& invocation, const RecordOptions& options,
                  const std::vector<std::string>& program)
      : json_(invocation.options.json) {
    if (!options.file.empty()) file_.emplace(options.file, program);
  }

  // How many steps the message holds that were recorded since this client came.
  int onMessage(const RecorderClient::Message& message) {
    const auto steps = objectsOf(message.text);
    if (json_) std::cout << printableJson(message.text) << '\n';
    if (!json_) print(message, steps);
    if (message.earlier) return 0;
    if (file_) keep(message.text, steps);
    return std::max(1, static_cast<int>(steps.size()));
  }

  std::size_t kept() const { return file_ ? file_->steps() : 0; }

 private:
  static void print(const RecorderClient::Message& message, const Json& steps) {
    const auto time = padded(message.earlier ? "earlier" : timeOfDay(), 12) + "  ";
    for (const auto& step : steps) {
      std::cout << Terminal::faint(time);
      printStep(step);
    }
    if (steps.empty()) std::cout << Terminal::faint(time) << inQuotes(message.text) << '\n';
  }

  // Text of a web page is kept as it is, so that nothing is lost, though it cannot be played.
  void keep(const std::string& text, const Json& steps) {
    const auto passed = std::chrono::round<milliseconds>(Clock::now() - start_);
    const auto seconds = std::chrono::duration<double>(passed).count();
    for (const auto& step : steps) file_->add(seconds, step);
    if (steps.empty()) file_->add(seconds, text);
  }

  Clock::time_point start_ = Clock::now();
  std::optional<StreamSessionWriter> file_;
  bool json_;
};

std::size_t recordStream(Invocation& invocation, const RecordOptions& options) {
  invocation.enterNetwork();
  const auto program = startLine(invocation, options);
  auto recorder = invocation.recorder();
  StreamRecording recording(invocation, options, program);
  options.listening.run(invocation, {messagesOf(recorder, [&recording](const auto& message) {
                          return recording.onMessage(message);
                        })});
  return recording.kept();
}

// What the session channel tells.
class ChannelRecording {
 public:
  ChannelRecording(const Invocation& invocation, SessionClient& client,
                   const RecordOptions& options)
      : json_(invocation.options.json), client_(client) {
    const Json info = client.call("app.info");
    const auto program = options.program.empty()
                             ? startLineOf(static_cast<pid_t>(info.value("pid", 0L)))
                             : wordsOf(options.program);
    session_ = Session::recordedNow(program, info);
    if (!options.file.empty()) file_.emplace(options.file, session_.header());
  }

  // How many steps are new with it; null when nothing comes.
  std::optional<int> next(milliseconds timeout, std::span<const int> wakeOn) {
    const auto told = client_.next(timeout, wakeOn);
    if (!told) return std::nullopt;
    return told->method == "record.step" ? take(told->parameters) : 0;
  }

  // "check Saved": that this text is shown by an element that shows it alone.
  void onLine(const std::string& line) {
    constexpr std::string_view kCheck = "check ";
    if (!line.starts_with(kCheck)) {
      std::cerr << "tarni: a line \"check TEXT\" adds a check that the text is shown\n";
      return;
    }
    try {
      addCheck(line.substr(kCheck.size()));
    } catch (const RequestError& error) {
      std::cerr << "tarni: no check: " << printable(error.what()) << '\n';
    }
  }

  // The last act is told before the answer.
  void finish() {
    try {
      client_.call("record.stop");
      while (next(milliseconds(0), {})) continue;
    } catch (const WireError&) {
      // the program has ended, and has told before
    }
  }

  std::size_t kept() const { return file_ ? session_.steps().size() : 0; }

 private:
  int take(const Json& told) {
    try {
      const auto before = session_.steps().empty() ? 0 : session_.steps().back().order();
      Step step(told);
      print(step, step.order() <= before);
      const bool isNew = step.order() > before;
      keepFrom(session_.take(std::move(step)));
      return isNew ? 1 : 0;
    } catch (const std::invalid_argument& error) {
      std::cerr << "tarni: a step that is not understood is left out: " << printable(error.what())
                << '\n';
      return 0;
    }
  }

  void addCheck(const std::string& text) {
    const auto found = client_.call("element.find", {{"text", text}, {"visible", true}})
                           .value("elements", Json::array());
    if (found.size() != 1) {
      std::cerr << "tarni: no check: " << inQuotes(text) << " is shown by "
                << (found.empty() ? "nothing" : counted(found.size(), "element")) << '\n';
      return;
    }
    Json element = found.front();
    element["locators"] =
        client_.call("element.locators", {{"element", element["element"]}})["locators"];
    const Step check = Step::check(std::move(element), text);
    print(check, false);
    session_.insert(session_.steps().size(), check);
    keepFrom(session_.steps().size() - 1);
  }

  void keepFrom(std::size_t first) {
    if (!file_) return;
    for (auto at = first; at < session_.steps().size(); ++at) {
      file_->put(at, session_.steps()[at].json());
    }
  }

  void print(const Step& step, bool hasGrown) const {
    if (json_) {
      std::cout << printableJson(compact(step.json())) << std::endl;
      return;
    }
    std::cout << Terminal::faint(padded(hasGrown ? "grown" : timeOfDay(), 12) + "  ")
              << step.inWords() << std::endl;
  }

  const bool json_;
  SessionClient& client_;
  Session session_;
  std::optional<SessionLinesWriter> file_;
};

// False when the program cannot tell it.
bool startRecording(SessionClient& client, const std::string& checkKey) {
  try {
    client.call("record.start", checkKey.empty() ? Json::object() : Json{{"checkKey", checkKey}});
    return true;
  } catch (const RequestError& error) {
    if (error.name() != "unsupported operation" && error.name() != "unknown method") throw;
    return false;
  }
}

std::size_t recordChannel(Invocation& invocation, SessionClient& client,
                          const RecordOptions& options) {
  ChannelRecording recording(invocation, client, options);
  options.listening.run(invocation,
                        {[&recording](milliseconds timeout, std::span<const int> wakeOn) {
                           return recording.next(timeout, wakeOn);
                         },
                         [&recording](const std::string& line) { recording.onLine(line); }});
  recording.finish();
  return recording.kept();
}

void record(Invocation& invocation, const RecordOptions& options) {
  // An earlier session stays until this one has begun.
  if (!options.file.empty()) requireWritable(options.file);
  auto* const client = invocation.session();
  const bool usesChannel = client && startRecording(*client, options.checkKey);
  std::cerr << (usesChannel ? "tarni: recording over the session channel\n"
                            : "tarni: recording over the fixed port\n");
  const auto kept =
      usesChannel ? recordChannel(invocation, *client, options) : recordStream(invocation, options);
  if (!options.file.empty()) {
    std::cerr << "tarni: " << counted(kept, "step") << " kept in " << options.file << '\n';
  }
}

}  // namespace

void declareRecord(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<RecordOptions>();
  options->listening.declare(parser, "steps");
  parser.add_option("-o,--output", options->file, "keep a session here, for `tarni play`")
      ->type_name("FILE");
  parser
      .add_option("--program", options->program,
                  "the start-up line to keep with the session, unless it is to be found out")
      ->type_name("LINE");
  parser
      .add_option("--check-key", options->checkKey,
                  "the key that adds a check of what the pointer rests on, in the program itself")
      ->type_name("KEY");
  parser.footer(
      "Runs until Ctrl-C. FILE is whole after every step, whatever ends the recording. A step "
      "that\n"
      "grows (a text, a double click) is printed again. With --json each line is the step as "
      "JSON.\n"
      "A line \"check TEXT\" typed meanwhile adds a check that the text is shown; with\n"
      "--check-key F12 the key F12 in the program adds one of what the pointer rests on: its "
      "text,\n"
      "or whether it is checked. What is typed into\n"
      "fields that do not show it is not kept: `tarni play` asks for it by its name.\n"
      "With --port, or where the program has no session channel, the fixed stream is recorded: "
      "its\n"
      "recorder takes one client, once, and ends with the first playback command. What it had\n"
      "recorded last before this client came is printed as \"earlier\", not counted and not kept.\n"
      "With --json each line is a JSON array. What is typed is kept as it was typed, passwords\n"
      "included.");
  parser.callback([options, &invocation] { record(invocation, *options); });
}

}  // namespace tarni::host
