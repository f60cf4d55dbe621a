#include "agent/session/screen/Pages.h"

#include "agent/WebView/WebView.h"
#include "agent/elements/ViewKinds.h"
#include "agent/elements/WebViews.h"
#include "agent/session/protocol/JsonText.h"
#include "agent/session/screen/Survey.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::session {

using platform::CGPoint;
using platform::Task;
using platform::UIViewRef;

namespace {

constexpr const char* kScript = "session.js";

// JSON texts are JavaScript texts, but for two separators that old engines take for ends of lines.
std::string asScript(const std::string& text) {
  return Json(text).dump(-1, ' ', true, Json::error_handler_t::replace);
}

bool isReady(const UIViewRef& webView) {
  const auto page = platform::as<platform::UIWebView>(webView);
  return page && !page->isLoading() && !page->isSilent();
}

// What a function of the script answers; null when the page says nothing. The script is put into a
// page that has not got it.
Task<Json> askPage(UIViewRef webView, std::string call) {
  if (!isReady(webView)) co_return nullptr;
  const std::string guarded = "typeof tarniSessionTree==='function'?" + call + ":'none'";
  WebView bridge;
  std::string answer = co_await bridge.callJavaScriptFunction(webView, guarded);
  if (answer == "none") {
    co_await bridge.injectJSFile(webView, kScript);
    answer = co_await bridge.callJavaScriptFunction(webView, guarded);
  }
  Json told = Json::parse(answer, nullptr, false);
  if (!told.is_object()) co_return nullptr;
  if (told.contains("error")) {
    throw SessionError(errors::kJavaScriptError, told["error"].get<std::string>());
  }
  co_return told;
}

// As a view is described, but for what pages do not have.
std::string described(const UIViewRef& webView, const std::string& page, const Json& node) {
  Elements& elements = Elements::sharedInstance();
  const auto handleOf = [&](const Json& number) {
    return static_cast<long>(elements.handleOf(webView, page, number.get<long>()));
  };
  const platform::CGRect view = placeOf(webView).rect;
  const long parent = node.value("parent", 0L);
  JsonText text;
  text.open('{');
  text.add("element", handleOf(node.at("node")));
  for (const auto& [name, value] : node.items()) {
    if (name == "node" || name == "parent" || name == "x" || name == "y" || name == "width" ||
        name == "height") {
      continue;
    }
    text.key(name);
    text.raw(jsonText(value));
  }
  text.add("rect", platform::CGRect{
                       {view.minX() + node.value("x", 0.0), view.minY() + node.value("y", 0.0)},
                       {node.value("width", 0.0), node.value("height", 0.0)}});
  text.add("page", static_cast<long>(elements.handleOf(webView)));
  text.add("parent", parent == 0 ? static_cast<long>(elements.handleOf(webView))
                                 : static_cast<long>(elements.handleOf(webView, page, parent)));
  text.close('}');
  return text.take();
}

std::vector<PageNode> nodesIn(const UIViewRef& webView, const Json& told) {
  std::vector<PageNode> nodes;
  if (!told.is_object() || !told.contains("nodes")) return nodes;
  const std::string page = told.value("page", "");
  for (const Json& node : told["nodes"]) {
    const Handle element =
        Elements::sharedInstance().handleOf(webView, page, node.at("node").get<long>());
    nodes.push_back({element, described(webView, page, node)});
  }
  return nodes;
}

// The answer of a call about one element.
Task<Json> askAbout(PageElement element, std::string function, std::string more) {
  const SessionError gone(errors::kStaleElement, "the element is no longer in the page");
  UIViewRef webView = element.webView.lock();
  if (!webView || !webView->window()) throw SessionError(gone);
  std::string call = function + "(" + std::to_string(element.node) + more + ")";
  Json told = co_await askPage(webView, std::move(call));
  const bool isSame = told.is_object() && told.value("page", "") == element.document;
  if (!isSame || told.contains("gone")) throw SessionError(gone);
  co_return told;
}

}  // namespace

bool isPage(const UIViewRef& view) {
  return kindOf<platform::UIWebView>(view) && isWebView(view);
}

std::vector<UIViewRef> webViews() {
  std::vector<UIViewRef> found;
  for (const platform::UIWindowRef& window : shownWindows()) {
    surveyWindow(window, [&found](const Seen& seen) {
      if (isPage(seen.view)) found.push_back(seen.view);
      return true;
    });
  }
  return found;
}

Task<std::vector<PageNode>> nodesOf(UIViewRef webView) {
  const Json told = co_await askPage(webView, "tarniSessionTree()");
  co_return nodesIn(webView, told);
}

Task<std::vector<PageNode>> nodesThatFit(UIViewRef webView, Json members, long within,
                                         std::size_t limit) {
  std::string call = "tarniSessionSelect(" +
                     members.dump(-1, ' ', true, Json::error_handler_t::replace) + "," +
                     std::to_string(within) + "," + std::to_string(limit) + ")";
  const Json told = co_await askPage(webView, std::move(call));
  co_return nodesIn(webView, told);
}

Task<std::vector<PageNode>> nodesFound(UIViewRef webView, std::string way, std::string value) {
  std::string call = "tarniSessionFind(" + asScript(way) + "," + asScript(value) + ")";
  const Json told = co_await askPage(webView, std::move(call));
  co_return nodesIn(webView, told);
}

Task<std::string> descriptionOf(PageElement element) {
  const Json told = co_await askAbout(element, "tarniSessionDescribe", "");
  const std::vector<PageNode> nodes = nodesIn(element.webView.lock(), told);
  co_return nodes.empty() ? "{}" : nodes.front().description;
}

Task<void> clickIn(PageElement element) {
  co_await askAbout(element, "tarniSessionClick", "");
}

Task<CGPoint> pressPointIn(PageElement element, std::optional<CGPoint> place) {
  const Json asked = place ? Json{{"x", place->x}, {"y", place->y}} : Json();
  std::string more = "," + jsonText(asked);
  const Json told = co_await askAbout(element, "tarniSessionPress", std::move(more));
  if (told.contains("taker")) {
    throw SessionError(errors::kClickIntercepted,
                       told["taker"].get<std::string>() + " takes the press instead");
  }
  if (!told.contains("x")) {
    throw SessionError(errors::kNotInteractable,
                       "the element is disabled, or nothing of it is in sight");
  }
  co_return CGPoint{told["x"].get<double>(), told["y"].get<double>()};
}

Task<void> scrollToIn(PageElement element) {
  co_await askAbout(element, "tarniSessionScroll", "");
}

Task<void> setTextIn(PageElement element, std::string text) {
  std::string more = "," + asScript(text);
  co_await askAbout(element, "tarniSessionSetText", std::move(more));
}

Task<void> focusIn(PageElement element) {
  co_await askAbout(element, "tarniSessionFocus", "");
}

Task<std::optional<PagePortrait>> portraitIn(UIViewRef webView, std::optional<CGPoint> place) {
  std::string call = "tarniSessionFocused()";
  if (place) {
    call = "tarniSessionPointed(" + std::to_string(place->x) + "," + std::to_string(place->y) + ")";
  }
  const Json told = co_await askPage(webView, std::move(call));
  std::vector<PageNode> nodes = nodesIn(webView, told);
  if (nodes.empty()) co_return std::nullopt;
  const Json& node = told["nodes"].front();
  co_return PagePortrait{std::move(nodes.front()),
                         {node.value("x", 0.0), node.value("y", 0.0)},
                         node.value("editable", false),
                         node.value("secure", false),
                         jsonText(told.value("locators", Json::array())),
                         told.value("near", "")};
}

Task<std::string> locatorsIn(PageElement element) {
  const Json told = co_await askAbout(element, "tarniSessionPortrait", "");
  co_return jsonText(told.value("locators", Json::array()));
}

Task<std::string> evaluate(UIViewRef webView, std::string script) {
  if (!isReady(webView)) {
    throw SessionError(errors::kJavaScriptError, "the page is loading, or does not answer");
  }
  WebView bridge;
  co_return co_await bridge.callJavaScriptFunction(webView, script);
}

}  // namespace tarni::session
