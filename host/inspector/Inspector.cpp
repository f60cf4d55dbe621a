#include "host/inspector/Inspector.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "host/export/Export.h"
#include "host/export/LocatorCode.h"
#include "host/inspector/PageFiles.h"
#include "host/player/Player.h"
#include "host/session_client/Selector.h"
#include "host/wire/WireError.h"

namespace tarni::host {

using http::Reply;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds kBetweenSigns{1'000};
constexpr milliseconds kPatienceOfPages{10'000};

std::string newToken() {
  std::array<unsigned char, 24> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("the system gives no random numbers");
  }
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string token;
  for (const auto byte : bytes) {
    token += kDigits[byte >> 4];
    token += kDigits[byte & 15];
  }
  return token;
}

// In a time that does not tell how much of it is right.
bool isSame(std::string_view said, std::string_view token) {
  unsigned difference = said.size() == token.size() ? 0 : 1;
  for (std::size_t i = 0; i < std::min(said.size(), token.size()); ++i) {
    difference |= static_cast<unsigned char>(said[i] ^ token[i]);
  }
  return difference == 0;
}

// The page has everything from here, and is not part of any other page.
constexpr auto kPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
    "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

Reply withHeaders(Reply reply) {
  reply.headers["Content-Security-Policy"] = kPolicy;
  reply.headers["Referrer-Policy"] = "no-referrer";
  reply.headers["X-Content-Type-Options"] = "nosniff";
  reply.headers["Cache-Control"] = "no-store";
  return reply;
}

Reply refused(int status, const std::string& name, const std::string& sentence) {
  return Reply::json({{"name", name}, {"error", sentence}}, status);
}

Json bodyOf(const http::Request& request) {
  auto body = readJson(request.body);
  if (!body.is_object()) throw std::invalid_argument("the body is no JSON object");
  return body;
}

// Of those that a person has given in the page, and those of the environment.
Secrets secretsFor(const Step& step, const Json& given) {
  Secrets secrets;
  const auto& name = step.secret();
  if (name.empty()) return secrets;
  if (const auto value = textIn(given, name.c_str()); !value.empty())
    secrets.add(name + "=" + value);
  if (secrets.complete({name}).empty()) return secrets;
  throw RequestError("unknown secret",
                     "the secret \"" + name +
                         "\" is not known: write it into the step, or start `tarni inspect` with " +
                         Secrets::variableOf(name) + " in the environment",
                     Json::object());
}

// For the page.
Json asTold(const Played& played, const Secrets& secrets) {
  Json told{{"hasFailed", played.hasFailed()}, {"message", secrets.masked(played.message)}};
  if (played.locator) told["locator"] = *played.locator;
  if (!played.proposal.is_null()) {
    told["proposal"] = played.proposal;
    told["better"] = played.better;
  }
  told["candidates"] = Json::array();
  for (const auto& candidate : played.candidates) {
    auto& one = told["candidates"].emplace_back(candidate.description);
    one["whyNot"] = candidate.whyNot;
  }
  return told;
}

// What would go to whoever has the connection next.
bool isOfAConnection(const std::string& method) {
  return method == "cancel" || method.starts_with("record.") || method.starts_with("screen.");
}

}  // namespace

Inspector::Inspector(Feed& feed, std::uint16_t port)
    : feed_(feed), token_(newToken()), server_({.port = port}, routes()) {
  if (pageFiles().empty()) {
    throw std::runtime_error(
        "this build has no page of the inspector: node and npm were missing (tools/setup pages "
        "installs them)");
  }
}

std::string Inspector::address() const {
  return server_.url() + "/" + token_ + "/";
}

http::Routes Inspector::routes() {
  return http::Routes({
      {"GET", "/{token}/", guarded(&Inspector::file)},
      {"GET", "/{token}/{file}", guarded(&Inspector::file)},
      {"GET", "/{token}/events", guarded(&Inspector::events)},
      {"GET", "/{token}/programs", guarded(&Inspector::programs)},
      {"POST", "/{token}/inspect", guarded(&Inspector::inspect)},
      {"POST", "/{token}/start", guarded(&Inspector::start)},
      {"POST", "/{token}/record", guarded(&Inspector::record)},
      {"POST", "/{token}/play", guarded(&Inspector::play)},
      {"POST", "/{token}/open", guarded(&Inspector::openSession)},
      {"POST", "/{token}/export", guarded(&Inspector::exportTest)},
      {"POST", "/{token}/call", guarded(&Inspector::call)},
      {"POST", "/{token}/find", guarded(&Inspector::find)},
      {"POST", "/{token}/locators", guarded(&Inspector::locators)},
  });
}

http::Handler Inspector::guarded(Reply (Inspector::*answer)(const Request&)) {
  return [this, answer](const Request& request) {
    if (!isSame(request.variables.front(), token_)) {
      return refused(404, "no such page", "the address is not the one that `tarni inspect` said");
    }
    try {
      return withHeaders((this->*answer)(request));
    } catch (const RequestError& error) {
      return refused(200, error.name(), error.what());
    } catch (const WireError& error) {
      return refused(200, "no program", error.what());
    } catch (const std::invalid_argument& error) {
      return refused(400, "invalid argument", error.what());
    }
  };
}

Reply Inspector::file(const Request& request) {
  const auto& said = request.variables.back();
  const bool isPage = request.variables.size() < 2 || said.empty();
  const auto files = pageFiles();
  const auto found = std::ranges::find(files, isPage ? "index.html" : said, &PageFile::name);
  if (found == files.end()) return refused(404, "no such page", "nothing is at " + request.path);
  return {200, std::string(found->type), std::string(found->contents)};
}

Reply Inspector::events(const Request&) {
  // Closed when the connection lets go of what asks for more.
  auto opened = feed_.open();
  Stream& only = *opened;
  const std::shared_ptr<Stream> stream(&only,
                                       [this, opened](Stream* /*same*/) { feed_.close(opened); });
  return Reply::events([stream] { return stream->next(kBetweenSigns); });
}

Reply Inspector::programs(const Request&) {
  auto list = Json::array();
  for (const auto& subject : runningSubjects()) {
    list.push_back({{"name", subject.name}, {"pid", subject.pid}, {"command", subject.line}});
  }
  return Reply::json({{"programs", std::move(list)}});
}

Reply Inspector::inspect(const Request& request) {
  const auto body = bodyOf(request);
  const auto pid = body.value("pid", Json());
  auto subject = pid.is_number_integer() ? subjectOf(pid.get<pid_t>()) : std::nullopt;
  if (!subject) throw std::invalid_argument("no such program runs any more");
  feed_.show(*std::move(subject));
  return Reply::json(Json::object());
}

Reply Inspector::start(const Request&) {
  feed_.startAgain();
  return Reply::json(Json::object());
}

Reply Inspector::record(const Request& request) {
  feed_.record(bodyOf(request).value("on", Json()) == true);
  return Reply::json(Json::object());
}

// One step; what is played in which order is the page's affair.
Reply Inspector::play(const Request& request) {
  const auto body = bodyOf(request);
  const Step step(objectIn(body, "step"));
  Player::Manner manner;
  manner.secrets = secretsFor(step, objectIn(body, "secrets"));
  Played played;
  try {
    return Reply::json(calls_.with(session(), [&](SessionClient& client) {
      played = Player(client, manner).play(step);
      if (played.result == Played::Result::Lost) throw WireError(played.message);
      return asTold(played, manner.secrets);
    }));
  } catch (const WireError&) {
    // It may have been there to end the program.
    if (!played.hasActed || !feed_.awaitEnd()) throw;
    return Reply::json({{"hasFailed", false}, {"message", "the program ended"}});
  }
}

Reply Inspector::openSession(const Request& request) {
  const auto body = bodyOf(request);
  std::istringstream file(textIn(body, "session"));
  try {
    const auto lines = readSessionLines(file, textIn(body, "name"));
    if (lines.version == 1) lines.fail(1, "a session of version 1 is for tarni play alone");
    const auto session = Session::fromLines(lines);
    auto steps = Json::array();
    for (const auto& step : session.steps()) steps.push_back(step.json());
    return Reply::json({{"steps", std::move(steps)}});
  } catch (const std::invalid_argument& error) {
    return refused(200, "no session", error.what());
  }
}

// The steps of the page, as the session file that it would save.
Reply Inspector::exportTest(const Request& request) {
  const auto body = bodyOf(request);
  std::istringstream file(textIn(body, "session"));
  const auto session = Session::fromLines(readSessionLines(file, "the session"));
  const bool isPython = textIn(body, "language") == "python";
  const auto language = isPython ? ExportLanguage::Python : ExportLanguage::JavaScript;
  return Reply::json({{"text", exportedTest(session, language, textIn(body, "name"))}});
}

std::string Inspector::session() {
  if (auto address = feed_.session()) return *std::move(address);
  throw WireError("no program runs");
}

Reply Inspector::call(const Request& request) {
  const auto body = bodyOf(request);
  const auto method = textIn(body, "method");
  if (isOfAConnection(method)) throw std::invalid_argument("no page asks for " + method);
  auto& calls = method.starts_with("input.") ? hands_ : calls_;
  return Reply::json(calls.with(session(), [&](SessionClient& client) {
    return client.call(method, objectIn(body, "params"), kPatienceOfPages);
  }));
}

Reply Inspector::find(const Request& request) {
  const auto chain = parseChain(textIn(bodyOf(request), "selector"));
  return Reply::json(calls_.with(session(), [&](SessionClient& client) {
    const auto begin = Clock::now();
    Json found = findAll(client, chain);
    const std::chrono::duration<double, std::milli> took = Clock::now() - begin;
    return Json{{"elements", std::move(found)}, {"ms", took.count()}};
  }));
}

// Each with what it is written as.
Reply Inspector::locators(const Request& request) {
  const auto body = bodyOf(request);
  auto told = calls_.with(session(), [&](SessionClient& client) {
    return client.call("element.locators", {{"element", body.value("element", Json())}},
                       kPatienceOfPages);
  });
  for (auto& locator : told["locators"]) {
    const auto find = objectIn(locator, "find");
    locator["written"] = Selector::fromParameters(find).written();
    locator["code"] = linesOfCode(find, textIn(body, "program"));
  }
  return Reply::json(told);
}

}  // namespace tarni::host
