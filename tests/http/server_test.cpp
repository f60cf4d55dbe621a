#include "host/http/Server.h"

#include <gmock/gmock.h>
#include <httplib.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <thread>

#include "tests/support/Wire.h"

namespace tarni::host::http {
namespace {

using testing::HasSubstr;

Reply echo(const Request& request) {
  return Reply::json({{"variables", request.variables}, {"body", request.body}});
}

Routes routes() {
  return Routes(
      {{"GET", "/status", [](const Request&) { return Reply::json("ready"); }},
       {"GET", "/{any}", echo},
       {"POST", "/thing/{id}/part/{name}", echo},
       {"GET", "/broken", [](const Request&) -> Reply { throw std::runtime_error("no"); }},
       {"GET", "/events", [](const Request&) {
          return Reply::events([count = 0]() mutable -> std::optional<std::string> {
            return ++count > 3 ? std::nullopt : std::optional(count == 2 ? "" : "a\nb");
          });
        }}});
}

class HttpServer : public testing::Test {
 protected:
  HttpServer()
      : server_({.origins = {"http://page.example"}}, routes()),
        thread_([this] { server_.serve(); }) {
    tarni::test::eventually([this] { return client().Get("/status") != nullptr; });
  }
  ~HttpServer() override {
    server_.stop();
    thread_.join();
  }
  httplib::Client client() const { return httplib::Client("127.0.0.1", server_.port()); }
  int posted(const httplib::Headers& headers, const std::string& type = "application/json") const {
    return client().Post("/thing/7/part/x", headers, "{}", type)->status;
  }

  Server server_;
  std::thread thread_;
};

TEST_F(HttpServer, RoutesAreFoundAndWhatIsWrongSaysSoInJson) {
  EXPECT_EQ(client().Get("/status")->body, "\"ready\"") << "before a route with variables";
  const auto found = client().Post("/thing/7/part/a%20b", "{}", "application/json");
  EXPECT_EQ(found->body, R"({"variables":["7","a b"],"body":"{}"})");
  const auto errorOf = [](const httplib::Result& result) -> std::string {
    if (!result) return "no answer";
    return std::to_string(result->status) + " " +
           nlohmann::json::parse(result->body)["error"].get<std::string>();
  };
  EXPECT_EQ(errorOf(client().Get("/a/b")), "404 nothing is at /a/b");
  EXPECT_EQ(errorOf(client().Delete("/status")), "405 /status takes no DELETE");
  EXPECT_EQ(errorOf(client().Get("/broken")), "500 no");
  const std::string tooLong(std::size_t{65} << 20U, ' ');
  EXPECT_EQ(errorOf(client().Post("/status", tooLong, "application/json")),
            "413 the body is too long");
  EXPECT_THROW(Server({.port = server_.port()}, routes()), std::runtime_error)
      << "one server a port";
}

TEST_F(HttpServer, PagesFromElsewhereAreRefused) {
  EXPECT_EQ(posted({}), 200);
  EXPECT_EQ(posted({{"Host", "rebound.example"}}), 403);
  EXPECT_EQ(posted({{"Origin", "http://elsewhere.example"}}), 403);
  EXPECT_EQ(posted({{"Origin", server_.url()}}), 200);
  EXPECT_EQ(posted({}, "text/plain"), 415);
  const auto allowed = client().Options("/status", {{"Origin", "http://page.example"}});
  EXPECT_EQ(allowed->get_header_value("Access-Control-Allow-Origin"), "http://page.example");
  EXPECT_EQ(client().Get("/status")->get_header_value("Access-Control-Allow-Origin"), "");
}

TEST_F(HttpServer, ARefusedBodyIsNoSecondRequest) {
  const tarni::test::Wire wire(server_.port());
  const std::string hidden = "GET /status HTTP/1.1\r\nHost: localhost\r\n\r\n";
  wire.send(
      "POST /status HTTP/1.1\r\nHost: rebound.example\r\nContent-Type: application/json\r\n"
      "Content-Length: " +
      std::to_string(hidden.size()) + "\r\n\r\n" + hidden);
  EXPECT_THAT(wire.readLine(), HasSubstr("403"));
  EXPECT_TRUE(wire.seesClose());
}

TEST_F(HttpServer, EventsComeAsTheyAreAndSilentConnectionsHoldNobody) {
  std::vector<std::unique_ptr<tarni::test::Wire>> silent;
  for (int count = 0; count < 200; ++count) {
    silent.push_back(std::make_unique<tarni::test::Wire>(server_.port()));
  }
  const auto events = client().Get("/events");
  EXPECT_EQ(events->get_header_value("Content-Type"), "text/event-stream");
  EXPECT_EQ(events->body, "data: a\ndata: b\n\n:\n\ndata: a\ndata: b\n\n");
}

TEST(HttpServerAlone, EndsWhileAClientKeepsItsConnection) {
  Server server({}, routes());
  std::thread thread([&server] { server.serve(); });
  httplib::Client kept("127.0.0.1", server.port());
  kept.set_keep_alive(true);
  EXPECT_EQ(kept.Get("/status")->status, 200);
  server.stop();
  thread.join();
}

}  // namespace
}  // namespace tarni::host::http
