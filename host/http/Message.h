// Message: a request over HTTP and the reply to it, as handlers see them. Plain values, any thread.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host::http {

struct Request {
  std::string method;
  std::string path;                    // percent-decoded
  std::vector<std::string> variables;  // what stood for the names in the route's path, in its order
  std::map<std::string, std::string> query;
  std::string body;
  // By name in lower case.
  std::map<std::string, std::string> headers;
};

// Gives the next event of a stream. It waits for one a second or so at most and gives an empty text
// then, so that a client that went is noticed; null ends the stream. Called on the connection's
// thread.
using NextEvent = std::function<std::optional<std::string>()>;

struct Reply {
  int status = 200;
  std::string type;
  std::string body;
  std::map<std::string, std::string> headers = {};
  // Instead of a body: server-sent events, each with one of these texts as its data.
  NextEvent nextEvent = nullptr;

  static Reply json(const Json& value, int status = 200);
  // The same of what is JSON already.
  static Reply written(std::string json, int status = 200);
  static Reply events(NextEvent next);
};

}  // namespace tarni::host::http
