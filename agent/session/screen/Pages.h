// Pages: what stands in web views, asked of a script in the page. Page elements have handles like
// views. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "agent/session/protocol/SessionError.h"
#include "agent/session/screen/Elements.h"
#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni::session {

struct PageNode {
  Handle element;
  std::string description;  // JSON text
};

bool isPage(const platform::UIViewRef& view);
// All web views that are shown.
std::vector<platform::UIViewRef> webViews();

// Everything in the page, parents first; nothing while it loads or when it does not answer.
platform::Task<std::vector<PageNode>> nodesOf(platform::UIViewRef webView);
// Those with these of a selector's members (an object), at most `limit` (0 for all); `within` is
// what the page calls the element that they stand in, 0 for the page.
platform::Task<std::vector<PageNode>> nodesThatFit(platform::UIViewRef webView, Json members,
                                                   long within, std::size_t limit);
// By "css", "xpath", "text" or "textContains".
platform::Task<std::vector<PageNode>> nodesFound(platform::UIViewRef webView, std::string way,
                                                 std::string value);

// The following throw SessionError: stale element reference when the element has left the page,
// javascript error with what the page says.
platform::Task<std::string> descriptionOf(PageElement element);
platform::Task<void> clickIn(PageElement element);
// Where a press meets the element once it is in sight, from the web view's upper left corner: at
// its middle, or at the place from its own one. Throws SessionError: element not interactable,
// element click intercepted.
platform::Task<platform::CGPoint> pressPointIn(PageElement element,
                                               std::optional<platform::CGPoint> place);
platform::Task<void> scrollToIn(PageElement element);
platform::Task<void> setTextIn(PageElement element, std::string text);

platform::Task<void> focusIn(PageElement element);

// An element with the ways to find it again.
struct PagePortrait {
  PageNode node;
  platform::CGPoint corner;  // its upper left one, in the web view
  bool takesText = false;
  bool isSecure = false;
  std::string locators;  // JSON text, as of a view
  std::string near;      // the label of a field
};
// Of what lies there, in the web view's coordinates; of what has the focus without a place. Null
// when the page does not say.
platform::Task<std::optional<PagePortrait>> portraitIn(platform::UIViewRef webView,
                                                       std::optional<platform::CGPoint> place);
// JSON text.
platform::Task<std::string> locatorsIn(PageElement element);

// The text that the script gives.
platform::Task<std::string> evaluate(platform::UIViewRef webView, std::string script);

}  // namespace tarni::session
