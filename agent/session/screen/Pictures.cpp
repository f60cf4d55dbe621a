#include "agent/session/screen/Pictures.h"

#include <vector>

#include "agent/elements/ViewKinds.h"
#include "agent/session/screen/Survey.h"
#include "platform/Platform.h"

namespace tarni::session {

platform::Task<platform::UIImageRef> draw(platform::UIViewRef view) {
  platform::UIImageRef image = co_await view->drawViewHierarchy();
  const bool isDrawn = image && image->size().width > 0 && image->size().height > 0;
  if (!isDrawn) throw SessionError(errors::kNoPicture, "the view cannot be drawn");
  co_return image;
}

platform::Task<platform::UIImageRef> drawWithoutSecrets(platform::UIWindowRef window) {
  const platform::UIImageRef image = co_await draw(window);
  std::vector<platform::CGRect> secrets;
  surveyWindow(window, [&](const Seen& seen) {
    if (isSecure(seen.view) && seen.place().isVisible) secrets.push_back(seen.place().rect);
    return true;
  });
  if (secrets.empty()) co_return image;
  const platform::UIImageRef blurred = image->blurred(secrets);
  if (!blurred) throw SessionError(errors::kNoPicture, "what is secret cannot be hidden");
  co_return blurred;
}

Json encoded(const platform::UIImageRef& image) {
  constexpr double kQuality = 0.9;
  std::vector<std::byte> bytes = image->PNGRepresentation();
  const bool isPNG = !bytes.empty();
  if (!isPNG) bytes = image->JPEGRepresentation(kQuality);
  return {{"format", isPNG ? "png" : "jpeg"},
          {"width", image->size().width},
          {"height", image->size().height},
          {"scale", image->scale()},
          {"data", platform::current().encoding->base64EncodedString(bytes)}};
}

}  // namespace tarni::session
