// PlayReport: a played session as one HTML page that needs no server and nothing beside it, unless
// its pictures are kept in files. Plain values, any thread.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "host/player/Played.h"
#include "host/session/Session.h"

namespace tarni::host {

struct PlayReport {
  std::string file;     // the session's name
  std::string program;  // its start-up line
  std::string played;   // when
  std::vector<std::string> warnings;

  // Where the page finds a picture.
  using Address = std::function<std::string(const Picture&)>;

  // The page, in UTF-8. Nothing that comes from the session or the program is read as markup.
  std::string page(const Session& session, std::span<const Played> steps,
                   const Address& addressOf) const;
};

// The picture itself as an address.
std::string addressWithin(const Picture& picture);

}  // namespace tarni::host
