#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocketError.h"

#include <system_error>
#include <utility>

namespace tarni {
namespace {

const char* descriptionOf(GCDAsyncSocketErrorCode code) {
  switch (code) {
    case GCDAsyncSocketErrorCode::ConnectTimeout:
      return "Attempt to connect to host timed out";
    case GCDAsyncSocketErrorCode::ReadTimeout:
      return "Read operation timed out";
    case GCDAsyncSocketErrorCode::WriteTimeout:
      return "Write operation timed out";
    case GCDAsyncSocketErrorCode::ReadMaxedOut:
      return "Read operation reached set maximum length";
    case GCDAsyncSocketErrorCode::Closed:
      return "Socket closed by remote peer";
    case GCDAsyncSocketErrorCode::BadConfig:
    case GCDAsyncSocketErrorCode::BadParam:
    case GCDAsyncSocketErrorCode::Other:
      break;
  }
  return "";
}

}  // namespace

std::string NSError::description() const {
  std::string text = "Error Domain=" + domain + " Code=" + std::to_string(code) + " \"" +
                     localizedDescription + "\"";
  if (!localizedFailureReason.empty()) {
    text += " UserInfo={NSLocalizedFailureReason=" + localizedFailureReason + "}";
  }
  return text;
}

NSError socketError(GCDAsyncSocketErrorCode code) {
  return socketError(code, descriptionOf(code));
}

NSError socketError(GCDAsyncSocketErrorCode code, std::string message) {
  return {GCDAsyncSocketErrorDomain, static_cast<long>(code), std::move(message), ""};
}

NSError errnoError(int systemCode, std::string reason) {
  return {NSPOSIXErrorDomain, systemCode, std::generic_category().message(systemCode),
          std::move(reason)};
}

}  // namespace tarni
