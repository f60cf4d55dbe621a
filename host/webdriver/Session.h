// Session: what a client has: its program, and what its commands leave for the next ones. Any
// thread, one at a time: commands of one session run one after the other.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/source/SourceTree.h"
#include "host/webdriver/Capabilities.h"
#include "host/webdriver/Program.h"

namespace tarni::host::webdriver {

class Report;

inline constexpr const char* kElementKey = "element-6066-11e4-a52e-4f735466cecf";

class Session {
 public:
  using Handle = long;

  // Throws as Program does.
  Session(std::string id, const Capabilities& wanted, Starter& starter,
          const std::stop_token& stop);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  const std::string& id() const { return id_; }
  // As they are answered.
  const Json& capabilities() const { return capabilities_; }
  Program& program() { return program_; }
  // Null when the client wants none.
  Report* report() { return report_.get(); }

  // Asks the program. Throws Error with the name that it gives; WireError when it is gone.
  Json call(const std::string& method, Json parameters = Json::object());
  // The same, when it is to end by then: a wait.
  Json call(const std::string& method, Json parameters, std::chrono::milliseconds timeout);

  // The description of an element, with "screenRect", "window" and "kinds".
  Json described(Handle element);
  // Whether there are a mouse and a keyboard.
  bool hasInput() const { return hasInput_; }

  // The program as XML, its places counted from the corner of the current window: what is known of
  // it, brought up to date by what changed.
  const SourceTree& source();

  struct Held {
    std::set<std::string> buttons, keys;
  };
  // Of a client's actions.
  struct Pointer {
    SourceTree::Point at;  // as the client counts
    long finger = 0;       // its number; 0 for the mouse
    bool isDown = false;   // of a finger
  };

  Timeouts timeouts;
  Json settings = Json::object();
  std::optional<Handle> window;  // that the client chose; null for the one that a person would use
  std::optional<Handle> page;  // the web view whose page is the context; null for the program's own
  std::vector<Json> frames;    // within that page, from the outermost: elements, as pages tell them
  Held held;                   // by the client's actions
  std::map<std::string, Pointer> pointers;  // as they left them; "" is the mouse or, where there is
                                            // none, a finger; others are more fingers

 private:
  void beginReport(const Capabilities& wanted);
  Json tree(long since);

  std::string id_;
  Json capabilities_;
  Program program_;
  bool hasInput_ = false;
  std::unique_ptr<Report> report_;
  std::unique_ptr<SourceTree> source_;
  long sourceVersion_ = 0;
};

// What a client calls an element of the program's own; those of pages have other identifiers.
Json reference(Session::Handle element);
// Throws Error ("no such element") for what is none.
Session::Handle elementOf(const std::string& id);
// The same of a reference; null when the value is none.
std::optional<Session::Handle> referred(const Json& value);

}  // namespace tarni::host::webdriver
