#include "backends/ios/runtime/Attachment.h"

#include "backends/ios/guard/Owned.h"

// Goes with the object that it is associated with.
@interface TarniAttachmentHolder : NSObject {
 @public
  std::shared_ptr<tarni::ios::Attachment>* attachment_;
}
@end

@implementation TarniAttachmentHolder

- (void)dealloc {
  if (attachment_) (*attachment_)->objectIsGoing();
  delete attachment_;
  [super dealloc];
}

@end

namespace tarni::ios {
namespace {

constexpr char kAttachmentKey = 0;

}  // namespace

std::shared_ptr<Attachment> attachmentOf(id object) {
  auto* const holder =
      static_cast<TarniAttachmentHolder*>(objc_getAssociatedObject(object, &kAttachmentKey));
  return holder ? *holder->attachment_ : nullptr;
}

void attach(id object, std::shared_ptr<Attachment> attachment) {
  const auto holder = Owned<TarniAttachmentHolder*>::adopting([[TarniAttachmentHolder alloc] init]);
  holder.get()->attachment_ = new std::shared_ptr<Attachment>(std::move(attachment));
  objc_setAssociatedObject(object, &kAttachmentKey, holder.get(),
                           OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

}  // namespace tarni::ios
