// FunctionCallObject: one parsed playback command, as the host tool sent it. Plain value; any
// thread.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "agent/commands/CommandField.h"

namespace tarni {

class FunctionCallObject {
 public:
  // The keys under which a command may hold something, in the order of the getters.
  static constexpr std::array<std::string_view, 7> keys{
      "functionname", "tagname",      "accessortype",      "accessorvalue",
      "datavalue",    "functiontype", "functionresulttype"};

  // The command; compared in lower case.
  const CommandField& getFunctionName() const { return functionName_; }
  // The kind of element sought.
  const CommandField& getTagName() const { return tagName_; }
  // How the element is identified; compared in lower case.
  const CommandField& getAccessorType() const { return accessorType_; }
  // The identifying value, or the identifier of an element found before.
  const CommandField& getAccessorValue() const { return accessorValue_; }
  // Text to type, a parent element's identifier, or a swipe direction.
  const CommandField& getDataValue() const { return dataValue_; }
  const CommandField& getFunctionType() const { return functionType_; }
  const CommandField& getFunctionResultType() const { return functionResultType_; }

  void setFunctionName(CommandField value) { functionName_ = std::move(value); }
  void setTagName(CommandField value) { tagName_ = std::move(value); }
  void setAccessorType(CommandField value) { accessorType_ = std::move(value); }
  void setAccessorValue(CommandField value) { accessorValue_ = std::move(value); }
  void setDataValue(CommandField value) { dataValue_ = std::move(value); }
  void setFunctionType(CommandField value) { functionType_ = std::move(value); }
  void setFunctionResultType(CommandField value) { functionResultType_ = std::move(value); }

 private:
  CommandField functionName_;
  CommandField tagName_;
  CommandField accessorType_;
  CommandField accessorValue_;
  CommandField dataValue_;
  CommandField functionType_;
  CommandField functionResultType_;
};

}  // namespace tarni
