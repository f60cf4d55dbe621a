// Screen: the windows of a session's program at one moment, and where things are: a client counts
// from the corner of its current window, whatever window they stand in, or from that of the page
// that is its context. Plain values; the session's
// thread.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "host/guard/Json.h"
#include "host/source/Attributes.h"
#include "host/source/SourceTree.h"

namespace tarni::host::webdriver {

class Session;

class Screen {
 public:
  using Point = SourceTree::Point;

  explicit Screen(Session& session);

  // Their descriptions; a list.
  const Json& windows() const { return windows_; }
  // The one that the client chose or, when it chose none, the one that a person would use: a dialog
  // before the window behind it. Throws Error ("no such window") when it is gone.
  const Json& current() const;
  // The same; null for none.
  const Json* find(long window) const;
  // The dialog that keeps the user from all other windows; null for none.
  const Json* dialog() const;

  // As SourceTree takes it.
  std::vector<SourceTree::Window> arrangement() const;
  // Where an element is, as the client counts; of its whole description.
  Rectangle placeOf(const Json& description) const;
  // A point as the client counts it, as a target of docs/session.md: in the uppermost window there.
  // Throws Error ("move target out of bounds").
  Json targetAt(Point point) const;

 private:
  Point corner() const;

  Json windows_;
  std::optional<long> chosen_;
  Json page_;  // the description of the web view whose page is the context; null for none
};

long handleOf(const Json& description);

}  // namespace tarni::host::webdriver
