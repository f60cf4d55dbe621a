// Admission: which requests a server takes, so that no page in a browser of this machine drives its
// programs: neither one from elsewhere, nor one whose name was pointed here afterwards. Immutable;
// any thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarni::host::http {

struct Asking {
  std::string method;
  std::string host;         // of the header "Host", with its port
  std::string origin;       // "" for none
  std::string contentType;  // "" for none
  bool hasBody = false;
};

struct Refusal {
  int status;
  std::string why;
};

class Admission {
 public:
  // `origins` are those of the pages that may ask, as "http://127.0.0.1:8080"; "*" for all.
  explicit Admission(std::vector<std::string> origins = {});

  // Null when the request is taken.
  std::optional<Refusal> refusal(const Asking& asking) const;
  // Whether a page of that origin may read the answers.
  bool allowsOrigin(const std::string& origin) const;

 private:
  std::vector<std::string> origins_;
};

}  // namespace tarni::host::http
