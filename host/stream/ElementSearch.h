// ElementSearch: finds the element that a recorded step names in the program as it stands now.
//
// Sure is the element at the recorded position when it has the recorded class and nothing speaks
// against it, and the only one on screen that has the recorded class and text. A text that differs
// speaks against an element, whatever its position. Two positions count: the one that the agent
// keeps of a view, made when it first saw it, and the view's place in the tree as it stands; each
// outlives changes that the other does not. The index among a class is a guess, taken only when
// asked for. An element of a web page is found in the same ways by the scripts in the page, which
// tell nothing about it but its text. Any thread, one at a time; failures are WireErrors and
// AgentExceptions.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/guard/Rectangle.h"
#include "host/stream/StreamStep.h"
#include "host/wire/PlaybackClient.h"

namespace tarni::host {

// An element as the agent describes it.
struct ElementOnScreen {
  std::string id;
  std::string text;     // what it shows now
  std::string picture;  // a JPEG in base-64
  Rectangle rectangle;  // in the window's coordinates
  bool isVisible = false;
  bool isTappable = false;  // a tap on it would reach it
  bool isEnabled = false;
  bool isEditable = false;
  std::string xpath;  // its place in the tree as it stands; "" in a page

  static ElementOnScreen fromJson(const Json& description);
  // `"OK" (disabled)`
  std::string description() const;
};

enum class LocatorKind { Position, Text, Index };
// "position", "class and text", "class and index"
const char* nameOf(LocatorKind kind);

struct Located {
  LocatorKind by = LocatorKind::Position;
  ElementOnScreen element;
};

// What one look has come to.
struct Look {
  std::optional<Located> located = {};
  std::string whyNot = {};                      // when nothing is located, for a person
  std::vector<ElementOnScreen> sameClass = {};  // visible or not, in the order of the tree
};

class ElementSearch {
 public:
  explicit ElementSearch(PlaybackClient& client) : client_(client) {}

  // One look, without waiting. Identifiers of a former look are of no use afterwards.
  Look look(const StreamStep& step, bool mayGuess);

 private:
  using Elements = std::vector<ElementOnScreen>;

  // What the agent tells of an element by its identifier; it ties the identifier to a description.
  struct Features {
    std::string text;
    std::string width;
    std::string height;

    bool operator==(const Features&) const = default;
  };
  // What the agent finds by the step's own accessors.
  struct Findings {
    std::optional<Features> atPosition;
    std::vector<Features> withText;
  };

  // `window` as in a command: "" is the key window.
  Findings findingsOf(const StreamStep& step, const std::string& window);
  Elements elementsOf(const std::string& className, const std::string& window);
  std::optional<Located> sureOne(const StreamStep& step, const Findings& findings,
                                 const Elements& all, const std::string& window);
  std::optional<Located> besideKeyWindow(const StreamStep& step);
  Look lookInPage(const StreamStep& step, bool mayGuess);
  bool hasTextInPage(const StreamStep& step, const std::string& id);

  static Features featuresOf(const ElementOnScreen& element);
  static bool speaksAgainst(const StreamStep& step, const Findings& findings,
                            const ElementOnScreen& element);
  static const ElementOnScreen* keptPosition(const StreamStep& step, const Findings& findings,
                                             const Elements& all);
  static std::vector<const ElementOnScreen*> namesakes(const StreamStep& step,
                                                       const Findings& findings,
                                                       const Elements& all);
  static std::string whyNot(const StreamStep& step, const Findings& findings, const Elements& all);

  std::vector<std::string> find(const StreamStep& step, const char* accessor,
                                const std::string& value, const std::string& window = "");
  // Of an element that fits, "" when there is none.
  std::string idInAnyWindow(const StreamStep& step);
  // The identifier of the only element at the recorded position; "" when there is none.
  std::string idAtPosition(const StreamStep& step, const std::string& window = "");
  Features featuresOf(const std::string& id);
  std::string ask(const char* function, const std::string& id);

  PlaybackClient& client_;
};

}  // namespace tarni::host
