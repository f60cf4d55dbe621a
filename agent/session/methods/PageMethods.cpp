#include "agent/session/methods/Handlers.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Pages.h"
#include "agent/session/screen/Selector.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::session::page {

using platform::UIViewRef;

namespace {

UIViewRef pageOf(const CallRef& call) {
  const Json& parameters = call->parameters();
  if (!parameters.contains("page")) {
    const std::vector<UIViewRef> all = webViews();
    if (all.size() == 1) return all.front();
    throw SessionError(errors::kInvalidArgument,
                       "\"page\" is needed where there is not exactly one; page.list has them");
  }
  const UIViewRef view = Elements::sharedInstance().viewOf(parameters["page"].get<Handle>());
  if (platform::as<platform::UIWebView>(view)) return view;
  throw SessionError(errors::kInvalidArgument, "\"page\" is not the handle of a web view");
}

std::string wayIn(const Json& parameters) {
  std::vector<std::string> given;
  for (const char* const way : {"css", "xpath", "text", "textContains"}) {
    if (parameters.contains(way)) given.emplace_back(way);
  }
  if (given.size() == 1) return given.front();
  throw SessionError(errors::kInvalidSelector,
                     "page.find takes one of css, xpath, text and textContains");
}

}  // namespace

Answer list(CallRef) {
  const std::vector<UIViewRef> all = webViews();
  Json pages = Json::array();
  for (const UIViewRef& view : all) {
    const auto page = platform::as<platform::UIWebView>(view);
    const bool isLoading = page->isLoading();
    const bool isSilent = !isLoading && page->isSilent();
    std::string title;
    std::string address;
    if (!isLoading && !isSilent) {
      title = co_await session::evaluate(view, "document.title");
      address = co_await session::evaluate(view, "location.href");
    }
    pages.push_back({{"page", Elements::sharedInstance().handleOf(view)},
                     {"title", title},
                     {"address", address},
                     {"loading", isLoading},
                     {"silent", isSilent}});
  }
  co_return Result(Json{{"pages", std::move(pages)}});
}

Answer evaluate(CallRef call) {
  UIViewRef view = pageOf(call);
  std::string script = call->parameters()["script"].get<std::string>();
  std::string text = co_await session::evaluate(std::move(view), std::move(script));
  co_return Result(Json{{"text", std::move(text)}});
}

Answer find(CallRef call) {
  const Json& parameters = call->parameters();
  UIViewRef view = pageOf(call);
  std::string way = wayIn(parameters);
  std::string value = parameters[way].get<std::string>();
  const std::vector<PageNode> nodes =
      co_await nodesFound(std::move(view), std::move(way), std::move(value));
  co_return answerOf({}, nodes);
}

Answer tree(CallRef call) {
  UIViewRef view = pageOf(call);
  const std::vector<PageNode> nodes = co_await nodesOf(std::move(view));
  co_return answerOf({}, nodes);
}

}  // namespace tarni::session::page
