// InputScript: what pointers and keyboard do, put together to as few requests to the program as
// there can be, so that their times are those that were asked for. The session's thread.
#pragma once

#include <chrono>
#include <map>
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

  struct Move {
    std::string pointer;
    Point to;
    milliseconds duration{0};
  };

  // Pointers begin where they are.
  explicit InputScript(Session& session);

  // Where an action's place is, as the client counts. Throws Error.
  Point pointAt(const std::string& pointer, double x, double y, const Json& origin);

  // All at the same time, each in a straight line and in small steps, when it is to take time.
  // Throws Error when one of them ends in no window.
  void move(const std::vector<Move>& moves);
  // A finger has no buttons: it goes down or up.
  void button(const std::string& pointer, const std::string& name, bool isDown);
  // The usual pointer, down for so long.
  void click(Point at, milliseconds duration = milliseconds(0));
  void drag(Point from, Point to, milliseconds hold, milliseconds duration);
  void key(const std::string& name, bool isDown);
  // Where there is no wheel a finger pushes what is there.
  void wheel(Point at, double right, double down);
  void pause(milliseconds duration);

  // Does it all. When something fails, everything is let go. Throws Error.
  void play();

 private:
  struct Request {
    std::string method;
    Json parameters;
    milliseconds duration{0};
  };

  using Places = std::map<std::string, Point>;  // by pointer

  Session::Pointer& pointerNamed(const std::string& name);
  void put(const Places& places, bool mustHit);
  void step(const char* method, Json step);

  Session& session_;
  Screen screen_;
  std::map<std::string, Session::Pointer> pointers_;
  std::vector<Request> requests_;
};

// Lets go of what the client has down.
void releaseInput(Session& session);

}  // namespace tarni::host::webdriver
