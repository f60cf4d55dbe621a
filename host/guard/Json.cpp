#include "host/guard/Json.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace tarni::host {

namespace {

[[noreturn]] void refuse(const char* what, std::size_t bound) {
  throw JsonTooLarge(what + std::to_string(bound));
}

// Puts the document together. What is open is the last in what it stands in, so it does not move.
class Builder : public nlohmann::json_sax<Json> {
 public:
  Json take() { return std::move(root_); }

  bool null() override { return put(nullptr); }
  bool boolean(bool value) override { return put(value); }
  bool number_integer(number_integer_t value) override { return put(value); }
  bool number_unsigned(number_unsigned_t value) override { return put(value); }
  bool number_float(number_float_t value, const string_t&) override { return put(value); }
  bool string(string_t& value) override { return put(std::move(value)); }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return open(Json::object()); }
  bool end_object() override { return close(); }
  bool start_array(std::size_t) override { return open(Json::array()); }
  bool end_array() override { return close(); }
  bool key(string_t& name) override {
    if (open_.back()->size() >= kMostKeys)
      refuse("JSON with more keys in an object than ", kMostKeys);
    key_ = std::move(name);
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override {
    return false;
  }

 private:
  bool put(Json value) {
    add(std::move(value));
    return true;
  }
  bool open(Json container) {
    if (open_.size() == kDeepestJson) refuse("JSON nested deeper than ", kDeepestJson);
    open_.push_back(&add(std::move(container)));
    return true;
  }
  bool close() {
    open_.pop_back();
    return true;
  }
  Json& add(Json value) {
    if (++values_ > kMostValues) refuse("JSON with more values than ", kMostValues);
    if (open_.empty()) return root_ = std::move(value);
    auto& parent = *open_.back();
    if (parent.is_object()) return parent[key_] = std::move(value);
    parent.push_back(std::move(value));
    return parent.back();
  }

  Json root_;
  std::vector<Json*> open_;
  std::string key_;
  std::size_t values_ = 0;
};

}  // namespace

Json readJson(std::string_view text) {
  if (text.size() > kMostBytes) refuse("JSON with more bytes than ", kMostBytes);
  // The parser takes a zero for the end of the text.
  const bool mayBeJson = text.find('\0') == std::string_view::npos;
  Builder builder;
  return mayBeJson && Json::sax_parse(text, &builder) ? builder.take()
                                                      : Json(Json::value_t::discarded);
}

std::string compact(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// The library looks at each byte by itself; most need no more than to be copied.
std::string textAsJson(std::string_view text) {
  const auto isMark = [](char c) { return c == '"' || c == '\\'; };
  const auto isOther = [](unsigned char c) { return c < ' ' || c >= 0x7F; };
  const auto isPlain = [&](char c) { return !isMark(c) && !isOther(c); };
  std::string json = "\"";
  json.reserve(text.size() + text.size() / 8);
  const auto* at = text.begin();
  while (at != text.end()) {
    const auto* const begin = at;
    if (isMark(*at)) {
      json += {'\\', *at++};
    } else if (isPlain(*at)) {
      at = std::find_if_not(at, text.end(), isPlain);
      json.append(begin, at);
    } else {
      at = std::find_if_not(at, text.end(), isOther);
      const auto escaped = compact(std::string(begin, at));
      json.append(escaped, 1, escaped.size() - 2);
    }
  }
  return json += '"';
}

std::string textIn(const Json& object, const char* key) {
  if (!object.is_object()) return "";
  const auto found = object.find(key);
  return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

std::optional<std::string> valueIn(const Json& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end() || found->is_null()) return std::nullopt;
  return found->is_string() ? found->get<std::string>() : compact(*found);
}

double numberIn(const Json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_number() ? found->get<double>() : 0;
}

bool isTrue(const Json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && *found == true;
}

double numberOfText(const Json& object, const char* key) {
  constexpr double kLongest = 1e9;
  const double number = std::strtod(textIn(object, key).c_str(), nullptr);
  return std::abs(number) <= kLongest ? number : 0;
}

bool isTextTrue(const Json& object, const char* key) {
  return textIn(object, key) == "true";
}

const Json& objectIn(const Json& object, const char* key) {
  static const Json nothing = Json::object();
  if (!object.is_object()) return nothing;
  const auto found = object.find(key);
  return found != object.end() && found->is_object() ? *found : nothing;
}

}  // namespace tarni::host
