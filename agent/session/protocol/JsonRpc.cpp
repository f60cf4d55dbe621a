#include "agent/session/protocol/JsonRpc.h"

#include "agent/session/protocol/Result.h"

namespace tarni::session {
namespace {

constexpr int kDeepest = 64;
constexpr std::size_t kMostValues = 250'000;

// Neither a parser's recursion nor how long the main thread has to do with what it made must be a
// client's to choose.
void checkShape(std::string_view line) {
  int depth = 0;
  std::size_t values = 1;
  bool isInText = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    const char letter = line[at];
    if (isInText && letter == '\\') {
      ++at;
    } else if (letter == '"') {
      isInText = !isInText;
    } else if (isInText) {
      continue;
    } else if (letter == '[' || letter == '{') {
      if (++depth > kDeepest) {
        throw SessionError(errors::kParseError, "the line is nested too deeply");
      }
    } else if (letter == ']' || letter == '}') {
      --depth;
    } else if (letter == ',' && ++values > kMostValues) {
      throw SessionError(errors::kParseError, "the line holds more than 250,000 values");
    }
  }
}

void require(bool holds, const char* why) {
  if (!holds) throw SessionError(errors::kInvalidRequest, why);
}

}  // namespace

Json parseRequest(std::string_view line) {
  checkShape(line);
  Json message = Json::parse(line, nullptr, false);
  if (message.is_discarded()) throw SessionError(errors::kParseError, "the line is no JSON text");
  require(!message.is_array(), "requests come one a line, not in an array");
  require(message.is_object(), "a request is an object");
  require(message.value("jsonrpc", Json()) == "2.0", "\"jsonrpc\" must be \"2.0\"");
  require(message.contains("method") && message["method"].is_string(), "\"method\" must be a text");
  const Json id = message.value("id", Json());
  require(id.is_null() || id.is_string() || id.is_number(), "\"id\" must be a number or a text");
  const Json parameters = message.value("params", Json::object());
  require(parameters.is_object(), "\"params\" must be an object: parameters have names");
  return message;
}

std::string resultAnswer(const Json& id, const std::string& result) {
  return R"({"jsonrpc":"2.0","id":)" + jsonText(id) + R"(,"result":)" + result + "}";
}

std::string errorAnswer(const Json& id, const SessionError& error) {
  Json data = error.details().is_object() ? error.details() : Json::object();
  data["error"] = error.kind().name;
  const Json body = {
      {"code", error.kind().code}, {"message", error.what()}, {"data", std::move(data)}};
  return R"({"jsonrpc":"2.0","id":)" + jsonText(id) + R"(,"error":)" + jsonText(body) + "}";
}

std::string notification(std::string_view method, const std::string& parameters) {
  return R"({"jsonrpc":"2.0","method":")" + std::string(method) + R"(","params":)" + parameters +
         "}";
}

}  // namespace tarni::session
