// The playback commands that work inside a web page: one table (WebViewCommands.cpp), one row a
// command with the script call that carries it out. Main thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "agent/commands/FunctionCallObject.h"
#include "platform/Task.h"

namespace tarni {
namespace UIViewFinder {

// Runs the command in the displayed web view; the text that the script gave. Null while no web view
// was found ready, for a name that is not such a command, for one without result, and for a
// script that gave nothing.
platform::Task<std::optional<std::string>> parseFunctionCallObjectForWebView(
    FunctionCallObject command);

}  // namespace UIViewFinder

// The text as it stands between the quotes of a JavaScript string.
std::string escapedForJavaScript(std::string_view text);

}  // namespace tarni
