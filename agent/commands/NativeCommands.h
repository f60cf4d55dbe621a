// The playback commands that work on native views: one table (NativeCommands.cpp), one row a
// command, and one handler a command, called like it on the wire. Main thread.
//
// A handler answers the entries of its command: objects with the one key "elementID" or "output".
// An element is named by the accessor value; for one that is unknown or has gone the commands on
// elements do nothing and answer nothing.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "agent/commands/PlaybackCommand.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

// Nothing for a name that is no command.
platform::Task<nlohmann::ordered_json> runNativeCommand(PlaybackCommand command);

namespace commands {

using Entries = platform::Task<nlohmann::ordered_json>;

// The element that the command names; null when there is none.
platform::UIViewRef elementOf(const PlaybackCommand& command);
// One entry, as the whole answer.
nlohmann::ordered_json output(std::string value);
nlohmann::ordered_json output(bool value);

// Searches (FindCommands.cpp). They clear the cache of found elements and fill it anew.
Entries findelementsinsideelement(PlaybackCommand command);
Entries findeditablecomponents(PlaybackCommand command);
Entries findelements(PlaybackCommand command);
Entries ai_findelements(PlaybackCommand command);

// Actions (ActionCommands.cpp).
Entries clickelement(PlaybackCommand command);
Entries sendkeysonelement(PlaybackCommand command);
Entries swipeto(PlaybackCommand command);
Entries swipereset(PlaybackCommand command);
Entries swipeon(PlaybackCommand command);
Entries highlight(PlaybackCommand command);

// Questions (StateCommands.cpp).
Entries isselected(PlaybackCommand command);
Entries isenabled(PlaybackCommand command);
Entries isdisplayed(PlaybackCommand command);
Entries gettext(PlaybackCommand command);
Entries getheight(PlaybackCommand command);
Entries getwidth(PlaybackCommand command);
Entries ai_getscreensnapshot(PlaybackCommand command);

}  // namespace commands
}  // namespace tarni
