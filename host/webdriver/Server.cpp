#include "host/webdriver/Server.h"

#include <nlohmann/json.hpp>

#include "host/launch/ProgramLauncher.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Report.h"

namespace tarni::host::webdriver {

namespace {

http::Reply replyWith(const Json& value, int status = 200) {
  if (!value.is_string()) return http::Reply::json({{"value", value}}, status);
  return http::Reply::written(
      R"({"value":)" + textAsJson(value.get_ref<const std::string&>()) + "}", status);
}

http::Reply failure(const Error& error) {
  Json value = {{"error", error.name()}, {"message", error.what()}, {"stacktrace", ""}};
  if (value["error"] == "unexpected alert open") value["data"] = {{"text", error.what()}};
  return replyWith(value, error.status());
}

// What the HTTP server itself refuses.
http::Reply refusal(int status, const std::string& sentence) {
  const auto* const name = status == 404   ? "unknown command"
                           : status == 405 ? "unknown method"
                           : status == 500 ? "unknown error"
                                           : "invalid argument";
  auto reply = failure(Error(name, sentence));
  reply.status = status;
  return reply;
}

Json bodyOf(const http::Request& request) {
  if (request.method != "POST" || request.body.empty()) return Json::object();
  try {
    auto body = readJson(request.body);
    if (body.is_object()) return body;
  } catch (const JsonTooLarge& error) {
    throw Error("invalid argument", error.what());
  }
  throw Error("invalid argument", "the body is no JSON object");
}

// Everything that goes wrong is an answer.
template <typename Work>
http::Reply guarded(const Work& work) {
  try {
    return work();
  } catch (const Error& error) {
    return failure(error);
  } catch (const InvalidSelector& error) {
    return failure(Error("invalid selector", error.what()));
  } catch (const Json::exception& error) {
    return failure(Error("invalid argument", error.what()));
  } catch (const std::invalid_argument& error) {
    return failure(Error("invalid argument", error.what()));
  } catch (const std::exception& error) {
    return failure(Error("unknown error", error.what()));
  }
}

http::Setup setupOf(const ServerOptions& options) {
  return {.address = options.address,
          .port = options.port,
          .origins = options.origins,
          .folder = {},
          .error = refusal};
}

}  // namespace

Server::Server(const ServerOptions& options)
    : sessions_(options.mostSessions), server_(setupOf(options), routes()) {}

http::Routes Server::routes() {
  std::vector<http::Route> routes = {
      {"GET", "/status", [this](const auto&) { return status(); }},
      {"GET", "/appium/sessions", [this](const auto&) { return replyWith(sessions_.list()); }},
      {"POST", "/session", [this](const auto& request) { return create(request); }},
      {"DELETE", "/session/{session}", [this](const auto& request) { return end(request); }},
  };
  for (const auto& command : commands()) {
    routes.push_back({command.method, std::string("/session/{session}") + command.path,
                      [this, &command](const auto& request) { return run(command, request); }});
  }
  return http::Routes(std::move(routes));
}

// What runs in sessions ends with them, and would else be waited for.
void Server::stop() {
  sessions_.endAll();
  server_.stop();
}

http::Reply Server::create(const http::Request& request) {
  return guarded([&] {
    const auto key = request.headers.find("x-idempotency-key");
    return replyWith(
        sessions_.create(bodyOf(request), key != request.headers.end() ? key->second : ""));
  });
}

http::Reply Server::end(const http::Request& request) {
  return guarded([&] {
    // Clients quit after what has ended a session by itself, too; that is not to hide what it was.
    sessions_.end(request.variables.front());
    return replyWith(nullptr);
  });
}

// A Grid takes anything but 200 for a broken node, and running out of sessions is not a defect.
http::Reply Server::status() {
  return guarded([this] {
    std::string message = sessions_.isFull() ? "as many sessions as there may be" : "ready";
    int status = 200;
    try {
      agentLibrary();
    } catch (const std::runtime_error& error) {
      message = error.what();
      status = 503;
    }
    return replyWith({{"ready", status == 200 && !sessions_.isFull()},
                      {"message", message},
                      {"sessions", {{"most", sessions_.most()}}},
                      {"build", {{"name", "Tarni"}, {"version", TARNI_VERSION}}}},
                     status);
  });
}

http::Reply Server::run(const Command& command, const http::Request& request) {
  return guarded([&] {
    const auto& variables = request.variables;
    return replyWith(sessions_.run(variables.front(), [&](Session& session) {
      const Arguments arguments{{variables.begin() + 1, variables.end()}, bodyOf(request)};
      const auto handler = session.page ? command.page : command.native;
      if (handler != nullptr) {
        auto* const report = session.report();
        return report != nullptr ? report->run(session, command, arguments, handler)
                                 : handler(session, arguments);
      }
      throw Error("unsupported operation",
                  session.page ? "this means nothing in a page: choose the context NATIVE_APP"
                               : "this means something in a page only: choose its context");
    }));
  });
}

}  // namespace tarni::host::webdriver
