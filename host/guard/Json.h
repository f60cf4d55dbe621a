// Json: JSON that came from outside, from the program or from a file: its one reader, and how parts
// of it are looked up that may be missing or of another kind. Reading takes time and memory in
// proportion to the text, whoever wrote it, and what it returns is nested so little that it can be
// copied and printed by recursion. Plain values, any thread.
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarni::host {

using Json = nlohmann::ordered_json;  // an object is a list, in which a key is searched for

// Far beyond what an agent sends: it nests to a depth of five, and 100,000 views take two million
// values.
inline constexpr std::size_t kDeepestJson = 64;
inline constexpr std::size_t kMostKeys = 256;  // of one object
inline constexpr std::size_t kMostValues = 5'000'000;
inline constexpr std::size_t kMostBytes = std::size_t{512} * 1024 * 1024;

// JSON beyond the bounds; the text says beyond which one.
class JsonTooLarge : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Discarded when the text is not JSON. Throws JsonTooLarge.
Json readJson(std::string_view text);

// On one line; what is not UTF-8 becomes U+FFFD.
std::string compact(const Json& value);
// The same of a text, faster where it is long: of a picture, or a whole tree.
std::string textAsJson(std::string_view text);

// The text under a key of an object, "" when there is none.
std::string textIn(const Json& object, const char* key);
// What is under a key of an object, texts as they are, all else as JSON writes it; null for none.
std::optional<std::string> valueIn(const Json& object, const char* key);
// The number under a key of an object, 0 when there is none.
double numberIn(const Json& object, const char* key);
// Whether there is true under a key of an object.
bool isTrue(const Json& object, const char* key);
// The same of what the playback port writes as text: a number that could be a length on a screen,
// else 0; "true".
double numberOfText(const Json& object, const char* key);
bool isTextTrue(const Json& object, const char* key);
// The object under a key of an object, an empty one when there is none.
const Json& objectIn(const Json& object, const char* key);

}  // namespace tarni::host
