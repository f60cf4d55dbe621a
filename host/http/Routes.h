// Routes: the table of what a server answers: method, path, handler. Immutable once it is made; any
// thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/http/Message.h"

namespace tarni::host::http {

using Handler = std::function<Reply(const Request&)>;

struct Route {
  std::string method;
  // "/session/{id}/url": a part in braces stands for any one part, which the request has among its
  // variables.
  std::string path;
  Handler handler;
};

class Routes {
 public:
  explicit Routes(std::vector<Route> routes);

  enum class Fit { Found, NoSuchPath, NoSuchMethod };
  struct Match {
    Fit fit = Fit::NoSuchPath;
    const Handler* handler = nullptr;  // when it is found
    std::vector<std::string> variables = {};
  };
  // A route without variables goes before one with some, whatever their order.
  Match match(std::string_view method, std::string_view path) const;

 private:
  struct Row {
    std::string method;
    std::vector<std::string> parts;
    Handler handler;
  };

  std::vector<Row> rows_;
};

}  // namespace tarni::host::http
