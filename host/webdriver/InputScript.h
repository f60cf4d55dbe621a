// InputScript: what mouse and keyboard do, put together to as few requests to the program as there
// can be, so that their times are those that were asked for. The session's thread.
#pragma once

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/webdriver/Screen.h"
#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

class InputScript {
 public:
  using milliseconds = std::chrono::milliseconds;
  using Point = Screen::Point;

  // Begins where the pointer is.
  explicit InputScript(Session& session);

  // Where an action's place is, as the client counts. Throws Error.
  Point pointAt(double x, double y, const Json& origin);

  // In a straight line and small steps, when it is to take time.
  void moveTo(Point point, milliseconds duration = milliseconds(0));
  void button(const std::string& name, bool isDown);
  void key(const std::string& name, bool isDown);
  void wheel(Point at, double right, double down);
  void pause(milliseconds duration);

  // Does it all. When something fails, all buttons and keys are let go. Throws Error.
  void play();

 private:
  struct Request {
    std::string method;
    Json parameters;
    milliseconds duration{0};
  };

  void step(const char* method, Json step);

  Session& session_;
  Screen screen_;
  Point pointer_;
  std::vector<Request> requests_;
};

// Lets go of what the client has down.
void releaseInput(Session& session);

}  // namespace tarni::host::webdriver
