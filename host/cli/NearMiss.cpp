#include "host/cli/NearMiss.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/guard/Likeness.h"
#include "host/guard/Printable.h"
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

struct Nearest {
  double likeness = kAlike;
  std::string words = "";
};

void consider(Nearest& nearest, const Selector& wanted, const Json& there) {
  for (const auto& [member, shownAs, option] : kAsked) {
    if (!(wanted.*member)) continue;
    const auto shown = textIn(there, std::string(shownAs).c_str());
    const double alike = likenessInAnyCase(*(wanted.*member), shown);
    if (alike <= nearest.likeness) continue;
    const auto is = shownAs == "class" ? "" : ", of a " + textIn(there, "class");
    nearest = {alike, std::string(option) + " " + inQuotes(shown) + is};
  }
}

std::vector<Json> allElements(SessionClient& client) {
  try {
    return client.call("tree.get").value("elements", std::vector<Json>());
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
  Nearest nearest;
  for (const auto& there : allElements(client)) consider(nearest, wanted, there);
  return nearest.words.empty() ? "" : "; did you mean " + nearest.words + "?";
}

}  // namespace tarni::host
