// JsonText: one JSON text, written straight down. Descriptions of thousands of views are made of
// it, for which a tree of values would take several times as long. Plain value; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "agent/session/protocol/Result.h"
#include "platform/QuartzCore/CGGeometry.h"

namespace tarni::session {

class JsonText {
 public:
  const std::string& text() const { return text_; }
  std::string take() { return std::move(text_); }
  std::size_t size() const { return text_.size(); }
  void clear() { text_.clear(); }

  void open(char bracket) {
    separate();
    text_ += bracket;
  }
  void close(char bracket) { text_ += bracket; }
  // Names are the agent's own and need no escaping.
  void key(std::string_view name) {
    separate();
    text_ += '"';
    text_ += name;
    text_ += "\":";
  }
  // Items of a list.
  void item(std::string_view value) {
    separate();
    write(value);
  }
  void item(long value) {
    separate();
    write(value);
  }
  // A value that is JSON text.
  void raw(std::string_view value) {
    separate();
    text_ += value;
  }

  void add(std::string_view name, std::string_view value) {
    key(name);
    write(value);
  }
  void add(std::string_view name, const char* value) { add(name, std::string_view(value)); }
  void add(std::string_view name, const std::string& value) { add(name, std::string_view(value)); }
  // Null is left out.
  void add(std::string_view name, const std::optional<std::string>& value) {
    if (value) add(name, std::string_view(*value));
  }
  void add(std::string_view name, bool value) {
    key(name);
    text_ += value ? "true" : "false";
  }
  void add(std::string_view name, long value) {
    key(name);
    write(value);
  }
  void add(std::string_view name, double value) {
    key(name);
    write(value);
  }
  void add(std::string_view name, const platform::CGRect& rect) {
    key(name);
    open('{');
    add("x", rect.origin.x);
    add("y", rect.origin.y);
    add("width", rect.size.width);
    add("height", rect.size.height);
    close('}');
  }

  void write(std::string_view value);
  void write(long value);
  // What is not a number is null.
  void write(double value);

 private:
  void separate() {
    if (text_.empty()) return;
    const char last = text_.back();
    if (last != '{' && last != '[' && last != ':') text_ += ',';
  }
  std::string text_;
};

}  // namespace tarni::session
