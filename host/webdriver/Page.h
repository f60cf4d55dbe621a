// Page: the page that is a session's context, asked by a script that is put into it
// (webscripts/src/webdriver.js). The session's thread. All throw Error, as the page tells it.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "host/guard/Json.h"
#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

// What one of the script's commands answers, in the frame that the session is in.
Json askPage(Session& session, const std::string& command, const Json& arguments = Json::object());

// What a client's script answers: the body of a function. With `isAsync` it is over when it calls
// its last argument. Waits as long as the time-out for scripts says.
Json runScript(Session& session, const std::string& script, const Json& arguments, bool isAsync);

// The pages that the program shows, as `page.list` tells them; a list.
Json pagesOf(Session& session);

// Makes the first page the session's context, which it waits for. Throws Error ("session not
// created").
void enterFirstPage(Session& session);

// Waits until it no longer loads, as long as that time-out says, and answers, as long as the one
// for scripts does. Throws Error ("unexpected alert open") when a dialog keeps it.
void awaitPage(Session& session);

// Waits until there is another document than the one of that time of origin, and all of it has
// come: a program may call a page loaded that has not begun. Not for long when none comes.
void awaitAnotherDocument(Session& session, const Json& origin);

}  // namespace tarni::host::webdriver
