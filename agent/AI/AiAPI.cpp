#include "agent/AI/AiAPI.h"

#include <deque>
#include <mutex>
#include <nlohmann/json.hpp>

#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni {

namespace uikit = platform::uikit;
using nlohmann::ordered_json;
using platform::CGPoint;
using platform::CGSize;
using platform::Task;
using platform::UIImageRef;
using platform::UIViewRef;
using platform::UIViewWeakRef;

namespace {

// A picture that is encoded once, by whichever thread comes to it first: the background queue, or
// the main thread when it needs the text before its turn. So neither ever waits for a thread that
// has not begun.
class Picture {
 public:
  explicit Picture(UIImageRef image) : image_(std::move(image)) {}

  const std::string& base64() {
    std::call_once(encoded_, [this] {
      text_ = Utilities::getBase64StringOfUIImage(image_);
      image_ = nullptr;
    });
    return text_;
  }

 private:
  std::once_flag encoded_;
  UIImageRef image_;
  std::string text_;
};

// Fills descriptions with their pictures while the next ones are being drawn.
class PictureEncoder {
 public:
  explicit PictureEncoder(ordered_json& descriptions) : descriptions_(descriptions) {}

  // The picture belongs to the description at `index`.
  void add(std::size_t index, UIImageRef image) {
    const auto picture = std::make_shared<Picture>(std::move(image));
    platform::current().dispatch->backgroundQueue().async([picture] { picture->base64(); });
    pending_.push_back({index, picture});
    if (pending_.size() > kMaximumPending) finishOldest();
  }
  void finish() {
    while (!pending_.empty()) finishOldest();
  }

 private:
  // Bounds the memory of the pictures that wait.
  static constexpr std::size_t kMaximumPending = 8;

  struct Pending {
    std::size_t index;
    std::shared_ptr<Picture> picture;
  };

  void finishOldest() {
    const Pending& oldest = pending_.front();
    descriptions_[oldest.index]["imageBase64"] = oldest.picture->base64();
    pending_.pop_front();
  }

  ordered_json& descriptions_;
  std::deque<Pending> pending_;
};

// The description without its picture, whose place is kept. Files the view under its "elementID".
ordered_json describe(const AiAPI& api, const UIViewRef& view) {
  std::string identifier = Utilities::getGUIDString();
  const auto flag = [&api](bool value) { return api.convertBooleanToString(value); };
  ordered_json description;
  description["elementID"] = identifier;
  description["text"] = Utilities::getUIViewTextForPlayBack(view);
  description["elementType"] = Utilities::getUIViewClassName(view);
  description["imageBase64"] = "";
  description["childCount"] = std::to_string(view->subviews().size());
  description["isProbablyTappable"] = flag(api.IsActuallyTappable(view));
  description["isVisibleInViewHierarchy"] = flag(KIFAdditions::isVisibleInViewHierarchy(view));
  description["isVisibleInWindowFrame"] = flag(KIFAdditions::isVisibleInWindowFrame(view));
  description["isUserInteractionEnabled"] = flag(view->isUserInteractionEnabled());
  description["isHidden"] = flag(view->isHidden());
  description["isEditable"] = flag(view->isKindOfClass(uikit::UITextField));
  description["isScrollable"] = flag(api.isViewScrollable(view));
  description["isImageObject"] = flag(api.IsImageTypeOfObject(view));
  description["rectangle"] = api.getRectObjectOfView(view);
  UIViewMemoryCache::sharedInstance().addViewInMemoryCache(view, std::move(identifier));
  return description;
}

std::vector<UIViewWeakRef> viewsOfType(const std::string& type,
                                       const platform::UIWindowRef& window) {
  const std::vector<UIViewRef> views = UIViewsManager().viewsForPlayerOfType(window, type);
  return {views.begin(), views.end()};
}

}  // namespace

Task<ordered_json> AiAPI::getAllViewsInformation(std::string viewType) const {
  co_return co_await getAllViewsInformation(std::move(viewType), UIViewFinder().getCurrentWindow());
}

Task<ordered_json> AiAPI::getAllViewsInformation(std::string viewType,
                                                 platform::UIWindowRef window) const {
  // 1. Forget what was found before; keep none of the views while pictures are drawn.
  UIViewMemoryCache::sharedInstance().clearMemoryCache();
  const std::vector<UIViewWeakRef> views = viewsOfType(viewType, std::exchange(window, nullptr));
  // 2. Draw and describe each view; its picture is encoded beside the drawing of the next.
  ordered_json descriptions = ordered_json::array();
  PictureEncoder encoder(descriptions);
  for (const UIViewWeakRef& weakView : views) {
    const UIViewRef view = weakView.lock();
    if (!view) continue;
    UIImageRef image = co_await Utilities::getUIImageOfUIView(view);
    descriptions.push_back(describe(*this, view));
    encoder.add(descriptions.size() - 1, std::move(image));
  }
  // 3. Wait for the last pictures.
  encoder.finish();
  co_return descriptions;
}

Task<ordered_json> AiAPI::getViewProperty(UIViewRef view) const {
  std::string image = co_await Utilities::getBase64StringOfUIImageOfUIView(view);
  ordered_json description = describe(*this, view);
  description["imageBase64"] = std::move(image);
  co_return description;
}

ordered_json AiAPI::getRectObjectOfView(const UIViewRef& view) const {
  const auto text = [](double value) { return Utilities::decimalText(value, 2); };
  const CGPoint origin = platform::convertPoint(view->frame().origin, view->superview(), nullptr);
  const CGSize size = view->bounds().size;
  ordered_json rectangle;
  rectangle["width"] = text(size.width);
  rectangle["height"] = text(size.height);
  rectangle["x"] = text(origin.x);
  rectangle["y"] = text(origin.y);
  return rectangle;
}

bool AiAPI::isViewScrollable(const UIViewRef& view) const {
  const std::string& name = view->getClass()->lowercaseName();
  const auto is = [&view](platform::Class kind) { return view->isKindOfClass(kind); };
  const auto contains = [&name](std::string_view part) {
    return name.find(part) != std::string::npos;
  };
  return contains("scrollview") || is(uikit::UIScrollView) || is(uikit::UITableView) ||
         is(uikit::UICollectionView) || is(uikit::UIPickerView) || contains("uicollectionview") ||
         name == "uipickercolumnview";
}

bool AiAPI::IsActuallyTappable(const UIViewRef& view) const {
  return KIFAdditions::isProbablyTappable(view);
}

bool AiAPI::IsImageTypeOfObject(const UIViewRef& view) const {
  return view->isKindOfClass(uikit::UIImage) || view->isKindOfClass(uikit::UIImageView);
}

std::string AiAPI::convertBooleanToString(bool value) const {
  return value ? "true" : "false";
}

Task<std::string> AiAPI::getBase64ImageOfCurrentWindow() const {
  const platform::UIWindowRef window = UIViewFinder().getCurrentWindow();
  if (!window) co_return std::string();
  co_return co_await Utilities::getBase64StringOfUIImageOfUIView(window);
}

}  // namespace tarni
