// UIViewsManager: walks view trees. Made fresh for each use, used on the main thread and not kept
// across a wait: the lists that it returns are its own and end with it.
//
// Every walk is one pass without recursion, linear in views however deep or wide the tree. An
// unchanged tree is walked without a memory allocation: the buffers pass from one manager to the
// next.
#pragma once

#include <string>
#include <vector>

#include "agent/elements/ViewWalk.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class UIViewsManager {
 public:
  // What a walk for playback does about positions that views of other windows have as well. Of the
  // key window: a new view takes its position over, and only who has a position last is found
  // there. Of each window: a position is left to who has it, and every view is found at its own.
  enum class Positions { OfKeyWindow, OfEachWindow };

  explicit UIViewsManager(Positions positions = Positions::OfKeyWindow);
  ~UIViewsManager();
  UIViewsManager(const UIViewsManager&) = delete;
  UIViewsManager& operator=(const UIViewsManager&) = delete;

  // Lists the visible views below `root`, parents before children, back to front; what is hidden is
  // left out with everything below it. On the way it gives new views their recording tag and XPath
  // position, remembers the text field being edited and takes leftover highlights off. With
  // `topLevel` a new list is begun, else the list is added to. Valid until the next walk of this
  // manager. Nothing to list for a null root.
  const std::vector<platform::UIViewRef>& GetAllViews(const platform::UIViewRef& root,
                                                      bool topLevel) &;

  // The same without the list, which for the walk of a hook would only take memory.
  void goThroughAllViews(const platform::UIViewRef& root);

  // Gives new visible views below `root` their recording tag and XPath position, and no more: for a
  // window that is touched beside the key window.
  void identifyViews(const platform::UIViewRef& root);

  // Lists all views below `root`, hidden ones included, in the same order; gives new views their
  // playback tag and XPath position and takes leftover highlights off.
  const std::vector<platform::UIViewRef>& GetAllViewsForPlayer(const platform::UIViewRef& root,
                                                               bool topLevel) &;

  // The same without the list: only the views whose class name is `type` in any case; all for the
  // empty type.
  std::vector<platform::UIViewRef> viewsForPlayerOfType(const platform::UIViewRef& root,
                                                        const std::string& type);
  // The same: the first that is meant; null for none.
  platform::UIViewRef firstForPlayer(const platform::UIViewRef& root,
                                     bool (*isMeant)(const platform::UIViewRef&));

  // Adds every view below `parent` that matches to UIViewMemoryCache, each under a fresh
  // identifier; the parent itself is not tested. `tagName` is a whole class name in any case, empty
  // for all. An accessor type other than "text", "partialtext", "xpath" and "" matches nothing.
  void findElements(const platform::UIViewRef& parent, const std::string& tagName,
                    const std::string& accessorType, const std::string& accessorValue);

  // Kept as the test of one view by itself; `findElements` makes it in its own walk. Adds the view
  // to UIViewMemoryCache when it is visible in its window and the accessor matches.
  void identifyElementByAccessor(const platform::UIViewRef& view, const std::string& tagName,
                                 const std::string& accessorType, const std::string& accessorValue);

  // The visible text fields below `root`. Leaves no trace.
  std::vector<platform::UIViewWeakRef> shownTextFields(const platform::UIViewRef& root);

  // True for labels. Kept for callers from outside.
  bool isApplicableforInteractionEnabling(const platform::UIViewRef& view) const;

 private:
  const Positions positions_;
  WalkBuffers buffers_;
};

}  // namespace tarni
