// Survey: the walk of the session channel over windows and views, with what can be told of each
// from its way down: where it stands in its window, and whether anything of it is to be seen. It
// leaves no trace in the views. Main thread, without a wait in between.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "agent/elements/ViewWalk.h"
#include "platform/QuartzCore/CGGeometry.h"
#include "platform/UIKit/UIView.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

// Where a view stands, in the coordinates of its window.
struct Place {
  platform::CGRect rect;
  bool isVisible = false;  // neither hidden nor clipped away; what covers it does not count
};

// Of a view by itself; a way up the tree.
Place placeOf(const platform::UIViewRef& view);

// What the views above do to those below.
class Surroundings {
 public:
  // Of what stands in `parent`, with all above it.
  static Surroundings inside(const platform::UIViewRef& parent);
  // Of what stands in `view`, which stands in these.
  Surroundings below(const platform::UIViewRef& view) const;
  Place placeOf(const platform::UIViewRef& view) const;

 private:
  bool isHidden_ = false;
  bool isMovedOnly_ = true;               // nothing above is transformed
  platform::CGPoint origin_;              // of the coordinates, when only moved
  std::optional<platform::CGRect> clip_;  // in window coordinates
};

// The surroundings on the way of a survey down to where it has come, worked out as far as somebody
// asks. For one survey.
class SurveyPath {
 public:
  void follow(std::span<const WalkLevel> levels);
  // Of the view that the survey has come to.
  Place placeOf(const platform::UIViewRef& view);

 private:
  std::span<const WalkLevel> levels_;
  std::vector<Surroundings> surroundings_;  // of what stands in each level's parent
  std::size_t known_ = 0;                   // of them, from the first
};

// A view that a survey has come to.
struct Seen {
  const platform::UIViewRef& view;
  const platform::UIViewRef& parent;  // null for a window
  std::size_t position;               // among the parent's contents
  std::size_t depth;                  // below the root of the survey
  SurveyPath* path;                   // null where the view is looked at by itself

  Place place() const { return path ? path->placeOf(view) : session::placeOf(view); }
};

// A menu's window lists what a press beside it reaches as well, as the menu bar: that stands where
// it is. Of the contents of `root`.
inline bool standsElsewhere(const platform::UIViewRef& view, const platform::UIViewRef& root) {
  return view->superview() != root && root->window() == root;
}

// Calls `visit(seen)` for every view that stands below `root`, parents first, siblings back to
// front; false ends the survey.
template <typename Visit>
bool surveyBelow(const platform::UIViewRef& root, Visit&& visit) {
  std::vector<WalkLevel> levels;
  SurveyPath path;
  bool goesOn = true;
  walkContents(root, levels, [&](const WalkStep& step) {
    if (!goesOn || (step.path.size() == 1 && standsElsewhere(step.view, root))) return false;
    path.follow(step.path);
    goesOn = visit(Seen{step.view, step.parent(), step.position, step.path.size(), &path});
    return goesOn;
  });
  return goesOn;
}

// The shown windows, and the key window, back to front as far as the platform says.
std::vector<platform::UIWindowRef> shownWindows();
// Those first that no modal window keeps the person from.
std::vector<platform::UIWindowRef> windowsInReachFirst();

// The same for a window and everything below it.
template <typename Visit>
bool surveyWindow(const platform::UIWindowRef& window, Visit&& visit) {
  const platform::UIViewRef nobody;
  return visit(Seen{window, nobody, 0, 0, nullptr}) && surveyBelow(window, visit);
}

}  // namespace tarni::session
