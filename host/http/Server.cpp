#include "host/http/Server.h"

#include <httplib.h>
#include <sys/socket.h>

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host/guard/Text.h"
#include "host/http/ThreadPerConnection.h"

namespace tarni::host::http {

namespace {

constexpr std::size_t kLongestBody = std::size_t{64} * 1024 * 1024;
constexpr std::size_t kMostRequestsAConnection = 1'000'000'000;
constexpr int kIdleSeconds = 300;
constexpr int kWaitingConnections = 512;

bool hasBody(const httplib::Request& taken) {
  const auto length = taken.get_header_value("Content-Length");
  return taken.has_header("Transfer-Encoding") || (!length.empty() && length != "0");
}

Request requestOf(const httplib::Request& taken, std::vector<std::string> variables) {
  Request request{taken.method, taken.path, std::move(variables), {}, taken.body, {}};
  for (const auto& [name, value] : taken.params) request.query[name] = value;
  for (const auto& [name, value] : taken.headers) request.headers[lowerCase(name)] = value;
  return request;
}

std::string asEvent(const std::string& data) {
  if (data.empty()) return ":\n\n";
  std::string event = "data: ";
  for (const char c : data) event += c == '\n' ? std::string("\ndata: ") : std::string(1, c);
  return event + "\n\n";
}

}  // namespace

Reply plainError(int status, const std::string& sentence) {
  return Reply::json({{"error", sentence}}, status);
}

Server::Server(Setup setup, Routes routes)
    : setup_(std::move(setup)),
      routes_(std::move(routes)),
      admission_(setup_.origins),
      library_(std::make_unique<httplib::Server>()) {
  configure();
  listenOn(setup_.port);
}

Server::~Server() = default;

std::string Server::url() const {
  const bool isSix = setup_.address.find(':') != std::string::npos;
  const auto host = isSix ? "[" + setup_.address + "]" : setup_.address;
  return "http://" + host + ":" + std::to_string(port_);
}

void Server::configure() {
  auto& library = *library_;
  library.new_task_queue = [this] { return new ThreadPerConnection(port_); };
  library.set_tcp_nodelay(true);
  library.set_keep_alive_max_count(kMostRequestsAConnection);
  library.set_keep_alive_timeout(kIdleSeconds);
  library.set_payload_max_length(kLongestBody);
  library.set_file_extension_and_mimetype_mapping("js", "text/javascript; charset=utf-8");
  if (!setup_.folder.empty() && !library.set_mount_point("/", setup_.folder.string())) {
    throw std::runtime_error("no folder " + setup_.folder.string());
  }
  library.set_pre_routing_handler([this](const Taken& taken, Given& given) {
    using Response = httplib::Server::HandlerResponse;
    return refuse(taken, given) ? Response::Handled : Response::Unhandled;
  });
  const auto handler = [this](const Taken& taken, Given& given) { answer(taken, given); };
  constexpr auto kAnything = ".*";
  library.Get(kAnything, handler).Post(kAnything, handler).Put(kAnything, handler);
  library.Patch(kAnything, handler).Delete(kAnything, handler).Options(kAnything, handler);
  // What the library refuses by itself has no body.
  library.set_error_handler([this](const Taken& taken, Given& given) {
    if (!given.body.empty() || given.content_provider_) return;
    const bool isTooLong = given.status == 413;
    put(setup_.error(given.status,
                     isTooLong ? "the body is too long" : "that is no request of HTTP"),
        taken, given);
  });
}

// The library lets several programs share a port, and keeps five waiting connections.
void Server::listenOn(int port) {
  int listener = -1;
  library_->set_socket_options([&listener](int socket) {
    listener = socket;
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  });
  const bool isBound = port == 0 || library_->bind_to_port(setup_.address, port);
  const int bound = port == 0 ? library_->bind_to_any_port(setup_.address) : port;
  if (!isBound || bound <= 0) {
    throw std::runtime_error("cannot listen on port " + std::to_string(port) + " of " +
                             setup_.address + ": does another program?");
  }
  ::listen(listener, kWaitingConnections);
  port_ = static_cast<std::uint16_t>(bound);
}

void Server::serve() {
  library_->listen_after_bind();
}

void Server::stop() {
  isStopping_ = true;
  library_->stop();
}

// A body that nobody reads would be taken for the next request: the connection ends with the
// answer, which a provider that fails behind its last byte brings about.
bool Server::refuse(const Taken& taken, Given& given) const {
  const auto header = [&taken](const char* name) { return taken.get_header_value(name); };
  const auto refusal = admission_.refusal(
      {taken.method, header("Host"), header("Origin"), header("Content-Type"), hasBody(taken)});
  if (!refusal) return false;
  const auto reply = setup_.error(refusal->status, refusal->why);
  given.status = reply.status;
  given.set_content_provider(
      reply.body.size(), reply.type,
      [body = reply.body](std::size_t, std::size_t, httplib::DataSink& sink) {
        sink.write(body.data(), body.size());
        return false;
      });
  return true;
}

void Server::answer(const Taken& taken, Given& given) const {
  put(replyTo(taken), taken, given);
}

Reply Server::replyTo(const Taken& taken) const {
  if (taken.method == "OPTIONS") return {204, "", ""};
  const bool isHead = taken.method == "HEAD";
  auto match = routes_.match(isHead ? "GET" : taken.method, taken.path);
  if (match.fit == Routes::Fit::NoSuchPath) {
    return setup_.error(404, "nothing is at " + taken.path);
  }
  if (match.fit == Routes::Fit::NoSuchMethod) {
    return setup_.error(405, taken.path + " takes no " + taken.method);
  }
  try {
    return (*match.handler)(requestOf(taken, std::move(match.variables)));
  } catch (const std::exception& error) {
    return setup_.error(500, error.what());
  }
}

void Server::put(const Reply& reply, const Taken& taken, Given& given) const {
  given.status = reply.status;
  for (const auto& [name, value] : reply.headers) given.set_header(name, value);
  const auto origin = taken.get_header_value("Origin");
  if (!origin.empty() && admission_.allowsOrigin(origin)) {
    given.set_header("Access-Control-Allow-Origin", origin);
    given.set_header("Vary", "Origin");
    given.set_header("Access-Control-Allow-Methods", "GET, POST, DELETE");
    given.set_header("Access-Control-Allow-Headers",
                     taken.get_header_value("Access-Control-Request-Headers"));
  }
  if (reply.nextEvent) {
    stream(reply.nextEvent, given);
  } else if (!reply.type.empty()) {
    given.set_content(reply.body, reply.type);
  }
}

void Server::stream(const NextEvent& next, Given& given) const {
  given.set_chunked_content_provider("text/event-stream",
                                     [this, next](std::size_t, httplib::DataSink& sink) {
                                       const auto data = isStopping_ ? std::nullopt : next();
                                       if (!data) {
                                         sink.done();
                                         return true;
                                       }
                                       const auto event = asEvent(*data);
                                       return sink.write(event.data(), event.size());
                                     });
}

}  // namespace tarni::host::http
