// DictionaryReader: reads the text of a JSON object and keeps what stands under a few keys of it.
//
// The text comes from outside. So it is read once, in linear time, and what nobody asks for is not
// kept, however many keys, elements and levels there are. Any thread.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarni {

class DictionaryReader : private nlohmann::json_sax<nlohmann::ordered_json> {
 public:
  // As deep as the parser of the home platform goes.
  static constexpr std::size_t kDeepestLevel = 512;

  // What the object holds under `keys`, the last value of a key that comes twice. An array or an
  // object is kept as an empty one. Null when the text is not a JSON object or has too many levels.
  static std::optional<nlohmann::ordered_json> read(std::string_view text,
                                                    std::span<const std::string_view> keys);

 private:
  explicit DictionaryReader(std::span<const std::string_view> keys) : keys_(keys) {}

  bool null() override { return keep(nullptr); }
  bool boolean(bool value) override { return keep(value); }
  bool number_integer(number_integer_t value) override { return keep(value); }
  bool number_unsigned(number_unsigned_t value) override { return keep(value); }
  bool number_float(number_float_t value, const string_t& /*digits*/) override {
    return keep(value);
  }
  bool string(string_t& value) override { return keep(std::move(value)); }
  bool binary(binary_t& /*value*/) override { return false; }
  bool start_object(std::size_t /*size*/) override {
    return begin(nlohmann::ordered_json::object());
  }
  bool end_object() override { return end(); }
  bool start_array(std::size_t /*size*/) override { return begin(nlohmann::ordered_json::array()); }
  bool end_array() override { return end(); }
  bool key(string_t& name) override;
  bool parse_error(std::size_t, const std::string&,
                   const nlohmann::detail::exception& /*error*/) override {
    return false;
  }

  // False ends the reading.
  bool keep(nlohmann::ordered_json value);
  bool begin(nlohmann::ordered_json container);
  bool end();

  const std::span<const std::string_view> keys_;
  nlohmann::ordered_json kept_ = nlohmann::ordered_json::object();
  std::size_t level_ = 0;
  std::optional<std::string> wantedKey_;  // the one whose value comes next
};

}  // namespace tarni
