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
inline constexpr ErrorKind kParseError{-32700, "parse error"};
inline constexpr ErrorKind kInvalidRequest{-32600, "invalid request"};
inline constexpr ErrorKind kUnknownMethod{-32601, "unknown method"};
inline constexpr ErrorKind kInvalidArgument{-32602, "invalid argument"};
inline constexpr ErrorKind kUnknownError{-32000, "unknown error"};
inline constexpr ErrorKind kNoSuchElement{-32001, "no such element"};
inline constexpr ErrorKind kStaleElement{-32002, "stale element reference"};
inline constexpr ErrorKind kNotInteractable{-32003, "element not interactable"};
inline constexpr ErrorKind kClickIntercepted{-32004, "element click intercepted"};
inline constexpr ErrorKind kInvalidSelector{-32005, "invalid selector"};
inline constexpr ErrorKind kTimeout{-32006, "timeout"};
inline constexpr ErrorKind kNoSuchWindow{-32007, "no such window"};
inline constexpr ErrorKind kJavaScriptError{-32008, "javascript error"};
inline constexpr ErrorKind kUnsupported{-32009, "unsupported operation"};
inline constexpr ErrorKind kCancelled{-32010, "cancelled"};
inline constexpr ErrorKind kNoPicture{-32011, "unable to capture screen"};

inline constexpr std::initializer_list<ErrorKind> kAll{
    kParseError,       kInvalidRequest,  kUnknownMethod, kInvalidArgument,
    kUnknownError,     kNoSuchElement,   kStaleElement,  kNotInteractable,
    kClickIntercepted, kInvalidSelector, kTimeout,       kNoSuchWindow,
    kJavaScriptError,  kUnsupported,     kCancelled,     kNoPicture};
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
