// FunctionCallObject: one parsed playback command, as the host tool sent it. A key that the command
// lacks is null. Plain value; any thread.
#pragma once

#include <optional>
#include <string>

namespace tarni {

class FunctionCallObject {
 public:
  using Text = std::optional<std::string>;

  // The command; compared in lower case.
  const Text& getFunctionName() const { return functionName_; }
  // The kind of element sought.
  const Text& getTagName() const { return tagName_; }
  // How the element is identified; compared in lower case.
  const Text& getAccessorType() const { return accessorType_; }
  // The identifying value, or the identifier of an element found before.
  const Text& getAccessorValue() const { return accessorValue_; }
  // Text to type, a parent element's identifier, or a swipe direction.
  const Text& getDataValue() const { return dataValue_; }
  const Text& getFunctionType() const { return functionType_; }
  const Text& getFunctionResultType() const { return functionResultType_; }

  void setFunctionName(Text value) { functionName_ = std::move(value); }
  void setTagName(Text value) { tagName_ = std::move(value); }
  void setAccessorType(Text value) { accessorType_ = std::move(value); }
  void setAccessorValue(Text value) { accessorValue_ = std::move(value); }
  void setDataValue(Text value) { dataValue_ = std::move(value); }
  void setFunctionType(Text value) { functionType_ = std::move(value); }
  void setFunctionResultType(Text value) { functionResultType_ = std::move(value); }

 private:
  Text functionName_;
  Text tagName_;
  Text accessorType_;
  Text accessorValue_;
  Text dataValue_;
  Text functionType_;
  Text functionResultType_;
};

}  // namespace tarni
