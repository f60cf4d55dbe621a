// ElementProperties: what a recorded touch knows about its view. Plain value; null is nil. Kept for
// callers from outside: a native step is made without them.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace tarni {

class ElementProperties {
 public:
  const std::optional<std::string>& getClassName() const { return className_; }
  void setClassName(std::optional<std::string> name) { className_ = std::move(name); }
  const std::optional<std::string>& getInnerText() const { return innerText_; }
  void setInnertext(std::optional<std::string> text) { innerText_ = std::move(text); }
  const std::optional<std::string>& getXPath() const { return xpath_; }
  void setXpath(std::optional<std::string> xpath) { xpath_ = std::move(xpath); }
  const std::optional<std::string>& getBase64Image() const { return base64Image_; }
  void setBase64Image(std::optional<std::string> image) { base64Image_ = std::move(image); }

 private:
  std::optional<std::string> className_;
  std::optional<std::string> innerText_;
  std::optional<std::string> xpath_;
  std::optional<std::string> base64Image_;
};

}  // namespace tarni
