// ElementSearch: finds the element that a recorded step names in the program as it stands now.
//
// Three locators are tried. The position in the view tree serves when the element there has the
// recorded class and text; the class with the text serves when it fits one visible element, or the
// recorded one among several; the class with the index among its kind is a guess, taken only as far
// as asked for. An element of a web page is found in the same three ways by the scripts in the
// page, which tell nothing about it but its text. Any thread, one at a time; failures are
// WireErrors and AgentExceptions.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/session/RecordedStep.h"
#include "host/wire/PlaybackClient.h"

namespace tarni::host {

// In the window's coordinates, in points.
struct Rectangle {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  bool operator==(const Rectangle&) const = default;
};

// An element as the agent describes it.
struct ElementOnScreen {
  std::string id;
  std::string text;     // what it shows now
  std::string picture;  // a JPEG in base-64
  Rectangle rectangle;
  bool isVisible = false;
  bool isTappable = false;  // a tap on it would reach it
  bool isEnabled = false;
  bool isEditable = false;

  static ElementOnScreen fromJson(const nlohmann::ordered_json& description);
  // `"OK" (disabled)`
  std::string description() const;
};

enum class LocatorKind { position, text, index };
// "position", "class and text", "class and index"
const char* nameOf(LocatorKind kind);

// Which elements may be found by their index.
enum class Guess {
  none,
  likely,  // one of the recorded size, for a step without a text that could speak against it
  any,
};

struct Located {
  LocatorKind by = LocatorKind::position;
  ElementOnScreen element;
};

class ElementSearch {
 public:
  explicit ElementSearch(PlaybackClient& client) : client_(client) {}

  // One look, without waiting. Identifiers of a former look are of no use afterwards.
  std::optional<Located> look(const RecordedStep& step, Guess guess);

  // All elements of the step's class, visible or not, in the order of the view tree; of its tag, in
  // the order of the page.
  std::vector<ElementOnScreen> elementsLike(const RecordedStep& step);

 private:
  using Elements = std::vector<ElementOnScreen>;
  using Found = std::optional<ElementOnScreen>;

  // What the agent tells of an element by its identifier; it ties the identifier to a description.
  struct Features {
    std::string text;
    std::string width;
    std::string height;
  };

  Elements elementsOf(const std::string& className);
  Elements elementsInPage(const std::string& tag);
  std::optional<Located> lookInPage(const RecordedStep& step, Guess guess);

  Found atPosition(const RecordedStep& step, const std::optional<Features>& features,
                   const Elements& all);
  Found byText(const RecordedStep& step, const Elements& all);
  Found byRecordedText(const RecordedStep& step, const Elements& all);

  // The identifier of the only element that fits; "" when there are none or several.
  std::string only(const RecordedStep& step, const char* accessor, const std::string& value);
  Features featuresOf(const std::string& id);
  static const ElementOnScreen* withFeatures(const Features& features, const RecordedStep& step,
                                             const Elements& all);
  std::string ask(const char* function, const std::string& id);

  PlaybackClient& client_;
};

}  // namespace tarni::host
