#include "agent/session/Description.h"
#include "agent/session/Elements.h"
#include "agent/session/Handlers.h"
#include "agent/session/Pages.h"
#include "agent/session/Pictures.h"
#include "agent/session/TreeVersions.h"
#include "platform/Platform.h"

namespace tarni::session::tree {

using platform::Task;
using platform::UIViewRef;

namespace {

// One pass over everything that is shown: those that changed since `known` are written.
void lookAtViews(TreeVersions::Version known, JsonText& list) {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  Elements& elements = Elements::sharedInstance();
  TreeVersions& versions = TreeVersions::sharedInstance();
  JsonText description;
  for (const platform::UIWindowRef& window : shownWindows()) {
    surveyWindow(window, [&](const Seen& seen) {
      description.clear();
      description.open('{');
      describe(seen.view, seen.place, description);
      if (seen.parent) {
        description.add("parent", static_cast<long>(elements.handleOf(seen.parent)));
        description.add("index", static_cast<long>(seen.position));
      }
      description.close('}');
      if (versions.note(elements.handleOf(seen.view), description.text(), known)) {
        list.raw(description.text());
      }
      return true;
    });
  }
}

Task<void> lookAtPages(TreeVersions::Version known, JsonText& list) {
  const std::vector<UIViewRef> views = webViews();
  for (const UIViewRef& webView : views) {
    const std::vector<PageNode> nodes = co_await nodesOf(webView);
    for (const PageNode& node : nodes) {
      if (TreeVersions::sharedInstance().note(node.element, node.description, known)) {
        list.raw(node.description);
      }
    }
  }
}

struct WindowPicture {
  Handle window;
  platform::UIImageRef image;
};

Task<std::vector<WindowPicture>> drawWindows() {
  std::vector<WindowPicture> pictures;
  for (const UIViewRef& window : shownWindows()) {
    platform::UIImageRef image = co_await window->drawViewHierarchy();
    if (image) pictures.push_back({Elements::sharedInstance().handleOf(window), std::move(image)});
  }
  co_return pictures;
}

}  // namespace

Answer get(CallRef call) {
  const Json& parameters = call->parameters();
  const TreeVersions::Version since = parameters.value("since", TreeVersions::Version{0});
  TreeVersions& versions = TreeVersions::sharedInstance();
  const bool isWhole = since == 0 || !versions.knows(since);
  const TreeVersions::Version known = isWhole ? 0 : since;
  // The pictures first: drawing may let the program run, and the tree is what stands there then.
  std::vector<WindowPicture> pictures;
  if (parameters.value("picture", false)) pictures = co_await drawWindows();
  JsonText list;
  list.open('[');
  versions.begin();
  lookAtViews(known, list);
  co_await lookAtPages(known, list);
  const TreeVersions::Version version = versions.end();
  list.close(']');
  Result result(Json{{"version", version}, {"whole", isWhole}});
  if (!isWhole) result.value["gone"] = versions.goneSince(known);
  result.written.emplace_back("elements", list.take());
  if (!pictures.empty()) {
    result.finish = [pictures](Json& value) {
      for (const WindowPicture& picture : pictures) {
        Json one = encoded(picture.image);
        one["window"] = picture.window;
        value["pictures"].push_back(std::move(one));
      }
    };
  }
  co_return result;
}

}  // namespace tarni::session::tree
