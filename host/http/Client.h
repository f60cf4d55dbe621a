// Client: one request to an HTTP server, as another part of an installation asks it. Any thread.
#pragma once

#include <string>

#include "host/http/Message.h"

namespace tarni::host::http {

// `url` as "http://10.0.0.1:4444". A body goes as JSON, with POST; without one it is GET. Waits
// some seconds. Throws std::runtime_error when no server answers.
Reply ask(const std::string& url, const std::string& path, const std::string& body = "");

}  // namespace tarni::host::http
