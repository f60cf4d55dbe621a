// SessionError: why a request was not carried out. The names are those of WebDriver, where it has
// one; the sentence says what to do about it. Plain value; any thread.
#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>

namespace tarni::session {

using Json = nlohmann::ordered_json;

struct ErrorKind {
  int code;
  const char* name;
};

namespace errors {
inline constexpr ErrorKind parseError{-32700, "parse error"};
inline constexpr ErrorKind invalidRequest{-32600, "invalid request"};
inline constexpr ErrorKind unknownMethod{-32601, "unknown method"};
inline constexpr ErrorKind invalidArgument{-32602, "invalid argument"};
inline constexpr ErrorKind unknownError{-32000, "unknown error"};
inline constexpr ErrorKind noSuchElement{-32001, "no such element"};
inline constexpr ErrorKind staleElement{-32002, "stale element reference"};
inline constexpr ErrorKind notInteractable{-32003, "element not interactable"};
inline constexpr ErrorKind clickIntercepted{-32004, "element click intercepted"};
inline constexpr ErrorKind invalidSelector{-32005, "invalid selector"};
inline constexpr ErrorKind timeout{-32006, "timeout"};
inline constexpr ErrorKind noSuchWindow{-32007, "no such window"};
inline constexpr ErrorKind javaScriptError{-32008, "javascript error"};
inline constexpr ErrorKind unsupported{-32009, "unsupported operation"};
inline constexpr ErrorKind cancelled{-32010, "cancelled"};
inline constexpr ErrorKind noPicture{-32011, "unable to capture screen"};

inline constexpr std::initializer_list<ErrorKind> all{
    parseError,       invalidRequest,  unknownMethod, invalidArgument,
    unknownError,     noSuchElement,   staleElement,  notInteractable,
    clickIntercepted, invalidSelector, timeout,       noSuchWindow,
    javaScriptError,  unsupported,     cancelled,     noPicture};
}  // namespace errors

class SessionError : public std::runtime_error {
 public:
  // `details` (an object, or null for none) goes beside the name into the answer's "data".
  SessionError(ErrorKind kind, const std::string& sentence, Json details = nullptr)
      : std::runtime_error(sentence), kind_(kind), details_(std::move(details)) {}

  const ErrorKind& kind() const { return kind_; }
  const Json& details() const { return details_; }

 private:
  ErrorKind kind_;
  Json details_;
};

}  // namespace tarni::session
