#include "agent/AI/AiAPI.h"

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>

#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/Utilities_Images.h"
#include "agent/interaction/ScreenSurvey.h"
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

// Encodes pictures while the next ones are being drawn.
class PictureEncoder {
 public:
  void add(UIImageRef image) {
    pending_.push_back(std::make_shared<Picture>(std::move(image)));
    platform::current().dispatch->backgroundQueue().async(
        [picture = pending_.back()] { picture->base64(); });
    if (pending_.size() > kMaximumPending) finishOldest();
  }
  // The texts of all of them, in their order.
  std::vector<std::string> finish() {
    while (!pending_.empty()) finishOldest();
    return std::move(texts_);
  }

 private:
  // Bounds the memory of the pictures that wait.
  static constexpr std::size_t kMaximumPending = 8;

  void finishOldest() {
    texts_.push_back(pending_.front()->base64());
    pending_.pop_front();
  }

  std::deque<std::shared_ptr<Picture>> pending_;
  std::vector<std::string> texts_;
};

// How often what a program shows is looked for again, as others have come while it was drawn.
constexpr std::size_t kMostTurns = 4;

// What takes a look at the whole screen to know.
struct Standing {
  bool isProbablyTappable;
  bool isVisibleInViewHierarchy;
  bool isVisibleInWindowFrame;
};

// Files the view under its "elementID".
ordered_json describe(const AiAPI& api, const UIViewRef& view, const Standing& standing,
                      std::string picture) {
  std::string identifier = Utilities::getGUIDString();
  const auto flag = [&api](bool value) { return api.convertBooleanToString(value); };
  ordered_json description;
  description["elementID"] = identifier;
  description["text"] = Utilities::getUIViewTextForPlayBack(view);
  description["elementType"] = Utilities::getUIViewClassName(view);
  description["imageBase64"] = std::move(picture);
  description["childCount"] = std::to_string(view->subviews().size());
  description["isProbablyTappable"] = flag(standing.isProbablyTappable);
  description["isVisibleInViewHierarchy"] = flag(standing.isVisibleInViewHierarchy);
  description["isVisibleInWindowFrame"] = flag(standing.isVisibleInWindowFrame);
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
  const auto positions = window == UIViewFinder::getCurrentWindow()
                             ? UIViewsManager::Positions::OfKeyWindow
                             : UIViewsManager::Positions::OfEachWindow;
  const std::vector<UIViewRef> views = UIViewsManager(positions).viewsForPlayerOfType(window, type);
  return {views.begin(), views.end()};
}

}  // namespace

Task<ordered_json> AiAPI::getAllViewsInformation(std::string viewType) const {
  co_return co_await getAllViewsInformation(std::move(viewType), UIViewFinder::getCurrentWindow());
}

Task<ordered_json> AiAPI::getAllViewsInformation(std::string viewType,
                                                 platform::UIWindowRef window) const {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  const UIViewWeakRef described = window;
  window = nullptr;
  UIViewMemoryCache::sharedInstance().clearMemoryCache();
  // Each picture is encoded beside the drawing of the next. None of the views is kept meanwhile.
  // The program may show others by then, which are drawn as well.
  PictureEncoder encoder;
  std::vector<UIViewWeakRef> views;
  std::map<UIViewWeakRef, std::size_t, std::owner_less<>> drawn;
  for (std::size_t before = 0, turn = 0; turn < kMostTurns; ++turn) {
    views = viewsOfType(viewType, described.lock());
    for (const UIViewWeakRef& weakView : views) {
      if (!drawn.try_emplace(weakView, drawn.size()).second) continue;
      UIImageRef image;
      if (const UIViewRef view = weakView.lock()) {
        image = co_await Utilities::getUIImageOfUIView(view);
      }
      encoder.add(std::move(image));
    }
    if (std::exchange(before, drawn.size()) == drawn.size()) break;
  }
  std::vector<std::string> pictures = encoder.finish();
  // Those that are still there, as they stand now that nothing runs in between.
  const ScreenSurvey survey(described.lock());
  ordered_json descriptions = ordered_json::array();
  for (const UIViewWeakRef& weakView : views) {
    const UIViewRef view = weakView.lock();
    if (!view) continue;
    const Standing standing{survey.isProbablyTappable(view), survey.isVisibleInViewHierarchy(view),
                            survey.isVisibleInWindowFrame(view)};
    descriptions.push_back(
        describe(*this, view, standing, std::move(pictures[drawn.at(weakView)])));
  }
  co_return descriptions;
}

Task<ordered_json> AiAPI::getViewProperty(UIViewRef view) const {
  std::string picture = co_await Utilities::getBase64StringOfUIImageOfUIView(view);
  const Standing standing{IsActuallyTappable(view), KIFAdditions::isVisibleInViewHierarchy(view),
                          KIFAdditions::isVisibleInWindowFrame(view)};
  co_return describe(*this, view, standing, std::move(picture));
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
  const platform::UIWindowRef window = UIViewFinder::getCurrentWindow();
  if (!window) co_return std::string();
  co_return co_await Utilities::getBase64StringOfUIImageOfUIView(window);
}

}  // namespace tarni
