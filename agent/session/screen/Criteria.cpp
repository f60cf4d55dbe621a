#include "agent/session/screen/Criteria.h"

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
    {"group", Kind::Text, kOptional,
     "The label or the identifier of something that it stands in, below the window."},
    {"windowTitle", Kind::Text, kOptional, "The title of the window that it stands in."},
    {"within", Kind::Integer, kOptional, "The handle of a window or an element that it stands in."},
};

// Calls `use(name, member)` for each.
template <typename Some, typename Use>
void forEachMember(Some& criteria, Use use) {
  use("identifier", criteria.identifier);
  use("label", criteria.label);
  use("text", criteria.text);
  use("textContains", criteria.textContains);
  use("placeholder", criteria.placeholder);
  use("class", criteria.className);
  use("kind", criteria.kind);
  use("xpath", criteria.xpath);
  use("visible", criteria.visible);
  use("focused", criteria.focused);
  use("group", criteria.group);
  use("windowTitle", criteria.windowTitle);
  use("within", criteria.within);
}

template <typename Value>
void read(const Json& members, const char* name, std::optional<Value>& member) {
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
  forEachMember(criteria, [&](const char* name, auto& member) {
    read(members, name, member);
    saysAnything = saysAnything || member;
  });
  if (saysAnything) return criteria;
  throw SessionError(
      errors::kInvalidSelector,
      "a selector says at least one of identifier, label, text, textContains, placeholder, "
      "class, kind, xpath, visible, focused, group, windowTitle and within");
}

Json Criteria::asJson() const {
  Json members = Json::object();
  forEachMember(*this, [&members](const char* name, const auto& member) {
    if (member) members[name] = *member;
  });
  return members;
}

void Criteria::write(JsonText& text) const {
  text.open('{');
  forEachMember(*this, [&text](const char* name, const auto& member) {
    if (member) text.add(name, *member);
  });
  text.close('}');
}

}  // namespace tarni::session
