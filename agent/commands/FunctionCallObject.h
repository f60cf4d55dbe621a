// FunctionCallObject: one playback command, as the host tool sent it. Plain value; any thread.
//
// All of its fields are text, empty where the command lacks them. One of another kind is kept as
// such: only a command that asks for it fails, with an NSException that names its key.
#pragma once

#include <array>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "agent/commands/CommandField.h"

namespace tarni {

class FunctionCallObject {
 public:
  // The keys under which a command may hold something.
  static constexpr std::array<std::string_view, 8> kKeys{
      "functionname", "tagname",      "accessortype",       "accessorvalue",
      "datavalue",    "functiontype", "functionresulttype", "window"};
  using Fields = std::array<CommandField, kKeys.size()>;

  // The fields in the order of the keys. NSException when the name or the accessor type, which
  // every command is asked for, is not text.
  explicit FunctionCallObject(Fields fields);

  // The command, in lower case.
  const std::string& getFunctionName() const { return functionName_; }
  // The kind of element sought.
  const std::string& getTagName() const { return fields_[1].text(); }
  // How the element is identified, in lower case.
  const std::string& getAccessorType() const { return accessorType_; }
  // The identifying value, or the identifier of an element found before.
  const std::string& getAccessorValue() const { return fields_[3].text(); }
  // Text to type, a parent element's identifier, or a swipe direction.
  const std::string& getDataValue() const { return fields_[4].text(); }
  // Where to search: empty for the key window, "any", or the identifier of an element found before
  // for the window that it stands in.
  const std::string& getWindow() const { return fields_[7].text(); }
  // Kept: host tools send both, and no command uses them.
  const std::string& getFunctionType() const { return fields_[5].text(); }
  const std::string& getFunctionResultType() const { return fields_[6].text(); }

 private:
  Fields fields_;
  std::string functionName_;
  std::string accessorType_;
};

namespace Utilities {

// Takes the fields of a playback command from its JSON (null: it has none). A field that is null is
// one that the command lacks. Playback has started from then on. Throws like the constructor.
FunctionCallObject createFunctionCallObject(const std::optional<nlohmann::ordered_json>& command);

}  // namespace Utilities
}  // namespace tarni
