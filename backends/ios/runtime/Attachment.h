// Attachments: the backend's own object beside an object of the application's, which it does not
// outlive. An associated object of a class of ours holds it, and tells it when the application's
// object goes.
//
// Main thread, as the objects are.
#pragma once

#include <memory>

#include "backends/ios/Apple.h"

namespace tarni::ios {

class Attachment {
 public:
  Attachment() = default;
  Attachment(const Attachment&) = delete;
  Attachment& operator=(const Attachment&) = delete;
  virtual ~Attachment() = default;

  // The application's object is being deallocated: it must not be sent anything any more.
  virtual void objectIsGoing() noexcept = 0;
};

// Null when none is attached.
std::shared_ptr<Attachment> attachmentOf(id object);
void attach(id object, std::shared_ptr<Attachment> attachment);

}  // namespace tarni::ios
