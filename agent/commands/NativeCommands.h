// The playback commands that work on native views: one table (NativeCommands.cpp), one row a
// command, and one handler a command, called like it on the wire. Main thread.
//
// A handler answers the entries of its command: objects with the one key "elementID" or "output".
// An element is named by the accessor value; for one that is unknown or has gone the commands on
// elements do nothing and answer nothing.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "agent/commands/FunctionCallObject.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

namespace UIViewFinder {

// Runs the native command; the array of its answer entries, empty for a name that is not a command.
// Throws what the platform raises.
platform::Task<nlohmann::ordered_json> parseFunctionCallObject(FunctionCallObject command);

}  // namespace UIViewFinder

namespace commands {

using Entries = platform::Task<nlohmann::ordered_json>;

// The element that the command names; null when there is none.
platform::UIViewRef elementOf(const FunctionCallObject& command);
// One entry, as the whole answer.
nlohmann::ordered_json output(std::string value);
nlohmann::ordered_json output(bool value);

// Searches (FindCommands.cpp). They clear the cache of found elements and fill it anew.
Entries findelementsinsideelement(FunctionCallObject command);
Entries findeditablecomponents(FunctionCallObject command);
Entries findelements(FunctionCallObject command);
Entries ai_findelements(FunctionCallObject command);

// Actions (ActionCommands.cpp).
Entries clickelement(FunctionCallObject command);
Entries sendkeysonelement(FunctionCallObject command);
Entries swipeto(FunctionCallObject command);
Entries swipereset(FunctionCallObject command);
Entries swipeon(FunctionCallObject command);
Entries highlight(FunctionCallObject command);

// Questions (StateCommands.cpp).
Entries isselected(FunctionCallObject command);
Entries isenabled(FunctionCallObject command);
Entries isdisplayed(FunctionCallObject command);
Entries gettext(FunctionCallObject command);
Entries getheight(FunctionCallObject command);
Entries getwidth(FunctionCallObject command);
Entries ai_getscreensnapshot(FunctionCallObject command);

}  // namespace commands
}  // namespace tarni
