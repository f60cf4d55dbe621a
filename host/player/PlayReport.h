// PlayReport: what was played, or asked by other means, step by step, as one HTML page that needs
// no server and nothing beside it, unless its pictures are kept in files. Plain values, any thread.
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
  std::string recorded = {};
  std::string toolkit = {};
  std::vector<std::string> warnings;

  // Where the page finds a picture.
  using Address = std::function<std::string(const Picture&)>;

  struct Shown {
    std::string words;
    Json element;  // with its `locators`
    Json act;      // with `at` and `way`
    const Played* played;
  };
  static std::vector<Shown> shown(const Session& session, std::span<const Played> steps);

  // The page, in UTF-8. Nothing that comes from the session or the program is read as markup.
  std::string page(std::span<const Shown> steps, const Address& addressOf) const;
};

// The picture itself as an address.
std::string addressWithin(const Picture& picture);

}  // namespace tarni::host
