#include <unordered_set>

#include "agent/session/methods/Handlers.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Elements.h"
#include "agent/session/screen/Pages.h"
#include "agent/session/screen/Pictures.h"
#include "agent/session/screen/TreeVersions.h"
#include "platform/Platform.h"

namespace tarni::session::tree {

using platform::Task;
using platform::UIViewRef;

namespace {

using Version = TreeVersions::Version;

// The description of a view in its tree; `parent` is 0 for a window.
void write(const UIViewRef& view, Handle handle, const Place& place, Handle parent,
           std::size_t index, JsonText& text) {
  text.clear();
  text.open('{');
  describe(view, handle, place, text);
  if (parent != 0) {
    text.add("parent", static_cast<long>(parent));
    text.add("index", static_cast<long>(index));
  }
  text.close('}');
}

// One pass over everything that is shown: those that changed since `known` are written. Gives the
// web views.
std::vector<UIViewRef> lookAtViews(Version known, JsonText& list) {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  Elements& elements = Elements::sharedInstance();
  TreeVersions& versions = TreeVersions::sharedInstance();
  std::vector<UIViewRef> pages;
  std::vector<Handle> path;  // from the window to where the survey has come
  JsonText description;
  for (const platform::UIWindowRef& window : shownWindows()) {
    surveyWindow(window, [&](const Seen& seen) {
      const Handle handle = elements.handleOf(seen.view);
      path.resize(seen.depth);
      const Handle parent = path.empty() ? 0 : path.back();
      path.push_back(handle);
      write(seen.view, handle, seen.place(), parent, seen.position, description);
      if (versions.note(handle, seen.position, description.text(), known)) {
        list.raw(description.text());
      }
      if (isPage(seen.view)) pages.push_back(seen.view);
      return true;
    });
  }
  return pages;
}

Task<void> lookAtPages(std::vector<UIViewRef> views, Version known, JsonText& list) {
  for (const UIViewRef& webView : views) {
    const std::vector<PageNode> nodes = co_await nodesOf(webView);
    for (const PageNode& node : nodes) {
      if (TreeVersions::sharedInstance().note(node.element, 0, node.description, known)) {
        list.raw(node.description);
      }
    }
  }
}

Task<Version> lookAtEverything(Version known, JsonText& list) {
  TreeVersions& versions = TreeVersions::sharedInstance();
  versions.begin();
  std::vector<UIViewRef> pages = lookAtViews(known, list);
  versions.setHasPages(!pages.empty());
  co_await lookAtPages(std::move(pages), known, list);
  co_return versions.end();
}

// False for a view that stands in no window that is shown.
bool writeAgain(const UIViewRef& view, Handle handle, JsonText& text) {
  const auto index = TreeVersions::sharedInstance().indexOf(handle);
  if (!index) return false;
  const UIViewRef parent = view->superview();
  const Handle above = parent ? Elements::sharedInstance().handleOf(parent) : 0;
  write(view, handle, placeOf(view), above, *index, text);
  return true;
}

// Only what the platform says may have changed.
Version lookAtChanges(const std::vector<UIViewRef>& changed, Version known, JsonText& list) {
  Elements& elements = Elements::sharedInstance();
  TreeVersions& versions = TreeVersions::sharedInstance();
  JsonText description;
  std::unordered_set<Handle> seen;
  versions.beginSome();
  for (const UIViewRef& first : changed) {
    for (UIViewRef view = first; view; view = view->superview()) {
      const Handle handle = elements.handleOf(view);
      if (!seen.insert(handle).second || !writeAgain(view, handle, description)) break;
      versions.noteAgain(handle, description.text());
    }
  }
  const Version version = versions.endOfSome();
  for (const Handle handle : versions.changedSince(known)) {
    if (writeAgain(elements.viewOf(handle), handle, description)) list.raw(description.text());
  }
  return version;
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
  const Version since = parameters.value("since", Version{0});
  TreeVersions& versions = TreeVersions::sharedInstance();
  const bool isWhole = since == 0 || !versions.knows(since);
  const Version known = isWhole ? 0 : since;
  // The pictures first: drawing may let the program run, and the tree is what stands there then.
  std::vector<WindowPicture> pictures;
  if (parameters.value("picture", false)) pictures = co_await drawWindows();
  JsonText list;
  list.open('[');
  const platform::ViewChanges changes = platform::current().application->takeViewChanges();
  const bool isEnough =
      changes.areKnown && known >= versions.lastWhole() && !isWhole && !versions.hasPages();
  Version version = 0;
  if (isEnough) {
    version = lookAtChanges(changes.views, known, list);
  } else {
    version = co_await lookAtEverything(known, list);
  }
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
