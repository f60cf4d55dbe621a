// Command: one row of the table of commands: where it is asked for, and what carries it out, in the
// program itself and in a page of it. Handlers are functions of a session and the request, called
// on the thread that serves the request, one at a time for each session.
#pragma once

#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

struct Arguments {
  std::vector<std::string> path;  // what stands for the names in the path, behind the session
  Json body;                      // an object

  // Of the body. Throw Error ("invalid argument") when it is missing or of another type.
  std::string text(const char* name) const;
  double number(const char* name) const;
};

using Handler = Json (*)(Session& session, const Arguments& arguments);

// Null where it means nothing there.
struct Command {
  const char* method;
  const char* path;  // behind "/session/{session}"
  Handler native;
  Handler page;
};

std::span<const Command> commands();

}  // namespace tarni::host::webdriver
