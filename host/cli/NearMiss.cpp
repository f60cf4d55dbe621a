#include "host/cli/NearMiss.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <span>
#include <string_view>

#include "host/guard/Likeness.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/session_client/SessionClient.h"

namespace tarni::host {

namespace {

// Classes have UIKit's names on every platform.
struct Toolkits {
  std::string_view own;
  std::string_view here;
};
constexpr Toolkits kClasses[] = {
    {"QAbstractButton", "UIButton"},
    {"QPushButton", "UIButton"},
    {"QToolButton", "UIButton"},
    {"QRadioButton", "UIButton"},
    {"QCheckBox", "UISwitch"},
    {"QLineEdit", "UITextField"},
    {"QTextEdit", "UITextView"},
    {"QPlainTextEdit", "UITextView"},
    {"QLabel", "UILabel"},
    {"QComboBox", "UIPickerView"},
    {"QSpinBox", "UIControl"},
    {"QDoubleSpinBox", "UIControl"},
    {"QSlider", "UISlider"},
    {"QDial", "UISlider"},
    {"QProgressBar", "UIProgressView"},
    {"QTabBar", "UITabBar"},
    {"QMenuBar", "UINavigationBar"},
    {"QToolBar", "UINavigationBar"},
    {"QAction", "UIActionButton"},
    {"QScrollArea", "UIScrollView"},
    {"QListView", "UITableView"},
    {"QListWidget", "UITableView"},
    {"QTableView", "UITableView"},
    {"QTableWidget", "UITableView"},
    {"QTreeView", "UITableView"},
    {"QTreeWidget", "UITableView"},
    {"QWidget", "UIView"},
    {"QWebEngineView", "UIWebView"},
    {"QDialog", "UIWindow"},
    {"QMainWindow", "UIWindow"},
};

// A member that is asked for, where people may have seen what they wrote, and what asks for that.
// The ways of one member stand together, its own first.
struct Asked {
  Selector::Member Selector::*member;
  std::string_view shownAs;
  std::string_view option;
};
constexpr std::array kAsked{
    Asked{&Selector::text, "text", "--text"},
    Asked{&Selector::text, "label", "--label"},
    Asked{&Selector::text, "placeholder", "--placeholder"},
    Asked{&Selector::text, "identifier", "--identifier"},
    Asked{&Selector::textContains, "text", "--text"},
    Asked{&Selector::label, "label", "--label"},
    Asked{&Selector::label, "text", "--text"},
    Asked{&Selector::placeholder, "placeholder", "--placeholder"},
    Asked{&Selector::identifier, "identifier", "--identifier"},
    Asked{&Selector::identifier, "text", "--text"},
    Asked{&Selector::className, "class", "--tag"},
    Asked{&Selector::className, "text", "--text"},
    Asked{&Selector::kind, "class", "--kind"},
};

// How well an element meets what is asked for.
struct Match {
  double alike = 0;
  std::string words = "";  // what would have to be asked instead, "" for nothing
  bool saysClass = false;
};

bool isMet(const Selector& wanted, const Asked& asked, const std::string& shown) {
  const auto& word = *(wanted.*asked.member);
  return asked.member == &Selector::textContains ? shown.find(word) != std::string::npos
                                                 : shown == word;
}

// Of one member, which is asked for.
Match matchOfMember(const Selector& wanted, std::span<const Asked> ways, const Json& there) {
  Match best;
  for (const Asked& way : ways) {
    const auto shown = textIn(there, std::string(way.shownAs).c_str());
    if (&way == &ways.front() && isMet(wanted, way, shown)) return {1};
    const double alike = likenessInAnyCase(*(wanted.*way.member), shown);
    if (alike <= best.alike) continue;
    best = {alike, std::string(way.option) + " " + inQuotes(shown), way.shownAs == "class"};
  }
  return best;
}

// Of all members that are asked for; none when the element has nothing like one of them.
Match matchOf(const Selector& wanted, const Json& there) {
  Match all;
  for (std::span<const Asked> left(kAsked); !left.empty();) {
    const auto isOfNext = [&](const Asked& way) { return way.member != left.front().member; };
    const auto end = std::ranges::find_if(left, isOfNext);
    const auto ways = left.first(static_cast<std::size_t>(end - left.begin()));
    left = left.subspan(ways.size());
    if (!(wanted.*ways.front().member)) continue;
    const auto match = matchOfMember(wanted, ways, there);
    if (match.alike <= kAlike) return {};
    all.alike += match.alike;
    all.saysClass = all.saysClass || match.saysClass;
    if (!match.words.empty()) addWord(all.words, match.words, " ");
  }
  return all;
}

std::vector<Json> elements(SessionClient& client, const char* method, const Json& parameters) {
  try {
    return client.call(method, parameters).value("elements", std::vector<Json>());
  } catch (const std::exception&) {
    return {};  // a hint is worth no other error than the one that it is for
  }
}

}  // namespace

std::string nearMissOf(SessionClient& client, const Selector& wanted) {
  for (const auto& name : {wanted.className, wanted.kind}) {
    const auto* const known = std::ranges::find(kClasses, name.value_or(""), &Toolkits::own);
    if (known == std::end(kClasses)) continue;
    return "; did you mean " + std::string(known->here) + "? Classes have UIKit's names";
  }
  Selector asked = wanted;
  std::vector<Json> there;
  // What is of a kind may have a class of another name.
  if (asked.kind) there = elements(client, "element.find", {{"kind", *asked.kind}});
  if (there.empty()) {
    there = elements(client, "tree.get", Json::object());
  } else {
    asked.kind.reset();
  }
  Match best;
  std::string of;
  for (const auto& element : there) {
    const auto match = matchOf(asked, element);
    if (match.words.empty() || match.alike <= best.alike) continue;
    best = match;
    of = match.saysClass ? "" : ", of a " + textIn(element, "class");
  }
  return best.words.empty() ? "" : "; did you mean " + best.words + of + "?";
}

}  // namespace tarni::host
