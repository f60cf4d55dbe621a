#include "agent/session/screen/Criteria.h"

#include <iterator>
#include <tuple>

#include "agent/session/protocol/Names.h"

namespace tarni::session {

namespace {

constexpr Parameter kMembers[] = {
    {"identifier", Kind::Text, kOptional, "Its accessibility identifier."},
    {"label", Kind::Text, kOptional, "Its accessibility label."},
    {"text", Kind::Text, kOptional, "The text that it shows, all of it."},
    {"textContains", Kind::Text, kOptional, "A part of that text, in any case."},
    {"placeholder", Kind::Text, kOptional, "What an empty field asks for."},
    {"class", Kind::Text, kOptional, "The name of its class, in any case."},
    {"kind", Kind::Text, kOptional, "The name of its class or of one that it is a kind of."},
    {"xpath", Kind::Text, kOptional,
     "Its position from its window (or from `within`) down, as `tarni tree` prints it: "
     "`\\UIWindowContent[0]\\UIButton[1]`; in a page from its root: "
     "`\\HTML[0]\\BODY[0]\\BUTTON[1]`."},
    {"visible", Kind::Flag, kOptional, "Whether anything of it is to be seen."},
    {"focused", Kind::Flag, kOptional,
     "Whether it has the focus, in the window that has the keyboard."},
    {"selected", Kind::Flag, kOptional, "Whether it is chosen, of a row, a cell or a tab."},
    {"group", Kind::Text, kOptional,
     "The label or the identifier of something that it stands in, below the window."},
    {"windowTitle", Kind::Text, kOptional, "The title of the window that it stands in."},
    {"within", Kind::Integer, kOptional, "The handle of a window or an element that it stands in."},
};

// Where each of them is kept, in that order.
constexpr std::tuple kPlaces{&Criteria::identifier,   &Criteria::label,       &Criteria::text,
                             &Criteria::textContains, &Criteria::placeholder, &Criteria::className,
                             &Criteria::kind,         &Criteria::xpath,       &Criteria::visible,
                             &Criteria::focused,      &Criteria::selected,    &Criteria::group,
                             &Criteria::windowTitle,  &Criteria::within};
static_assert(std::tuple_size_v<decltype(kPlaces)> == std::size(kMembers));

// Calls `use(name, member)` for each.
template <typename Some, typename Use>
void forEachMember(Some& criteria, Use use) {
  const Parameter* said = std::begin(kMembers);
  std::apply([&](auto... place) { (use((said++)->name, criteria.*place), ...); }, kPlaces);
}

template <typename Value>
void read(const Json& members, std::string_view name, std::optional<Value>& member) {
  const auto found = members.find(name);
  if (found == members.end()) return;
  try {
    member = found->template get<Value>();
  } catch (const Json::exception&) {
    throw SessionError(errors::kInvalidArgument,
                       "\"" + std::string(name) + "\" of a selector has the wrong type");
  }
}

}  // namespace

std::span<const Parameter> Criteria::parameters() {
  return kMembers;
}

Criteria Criteria::from(const Json& members) {
  Criteria criteria;
  bool saysAnything = false;
  forEachMember(criteria, [&](std::string_view name, auto& member) {
    read(members, name, member);
    saysAnything = saysAnything || member;
  });
  if (saysAnything) return criteria;
  throw SessionError(errors::kInvalidSelector,
                     "a selector says at least one of " + listed(namesOf(kMembers)));
}

void Criteria::requireNoOthers(const Json& members) {
  requireKnownMembers("a selector", members, namesOf(kMembers));
}

Json Criteria::asJson() const {
  Json members = Json::object();
  forEachMember(*this, [&members](std::string_view name, const auto& member) {
    if (member) members[name] = *member;
  });
  return members;
}

void Criteria::write(JsonText& text) const {
  text.open('{');
  forEachMember(*this, [&text](std::string_view name, const auto& member) {
    if (member) text.add(name, *member);
  });
  text.close('}');
}

}  // namespace tarni::session
