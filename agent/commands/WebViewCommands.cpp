#include "agent/commands/WebViewCommands.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <initializer_list>

#include "agent/WebView/WebView.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/Utilities_Messages.h"
#include "platform/Foundation/NSException.h"

namespace tarni {

using platform::Task;
using platform::UIViewRef;

namespace {

std::string scriptCall(std::string_view function, std::initializer_list<std::string_view> values) {
  std::string call(function);
  char separator = '(';
  for (const std::string_view value : values) {
    call += separator;
    call += '\'' + escapedForJavaScript(value) + '\'';
    separator = ',';
  }
  return call + ')';
}

std::string findElements(const FunctionCallObject& command) {
  return scriptCall("findElements",
                    {command.getTagName(), command.getAccessorType(), command.getAccessorValue()});
}

std::string findElementsInsideElement(const FunctionCallObject& command) {
  return scriptCall("findElementsInsideElement",
                    {command.getTagName(), command.getAccessorType(), command.getAccessorValue(),
                     command.getDataValue()});
}

std::string performClick(const FunctionCallObject& command) {
  return scriptCall("performClick", {command.getAccessorValue()});
}

std::string performTypeText(const FunctionCallObject& command) {
  return scriptCall("performTypeText", {command.getAccessorValue(), command.getDataValue()});
}

std::string tarni_getText(const FunctionCallObject& command) {
  return scriptCall("tarni_getText", {command.getAccessorValue()});
}

using Result = Task<std::optional<std::string>>;

Result withOutput(UIViewRef webView, std::string script) {
  WebView pages;
  std::string result = co_await pages.callJavaScriptFunction(std::move(webView), std::move(script));
  if (result.empty()) co_return std::nullopt;
  co_return result;
}

Result withoutOutput(UIViewRef webView, std::string script) {
  WebView pages;
  co_await pages.callJavaScriptFunctionWithoutOutPut(std::move(webView), std::move(script));
  co_return std::nullopt;
}

Result withoutOutputAlerting(UIViewRef webView, std::string script) {
  try {
    co_await withoutOutput(std::move(webView), std::move(script));
  } catch (const platform::NSException& exception) {
    Utilities::ShowAlertMessage(exception.reason());
  }
  co_return std::nullopt;
}

struct WebViewRow {
  std::string_view name;
  std::string (*script)(const FunctionCallObject&);
  Result (*call)(UIViewRef webView, std::string script);
};

constexpr std::array kWebViewRows{
    WebViewRow{"findelements", findElements, withOutput},
    WebViewRow{"findelementsinsideelement", findElementsInsideElement, withOutput},
    WebViewRow{"clickelement", performClick, withoutOutputAlerting},
    WebViewRow{"sendkeysonelement", performTypeText, withoutOutput},
    WebViewRow{"gettext", tarni_getText, withOutput},
};

}  // namespace

Task<std::optional<std::string>> UIViewFinder::parseFunctionCallObjectForWebView(
    FunctionCallObject command) {
  const auto row = std::ranges::find(kWebViewRows, command.getFunctionName(), &WebViewRow::name);
  if (row == kWebViewRows.end()) co_return std::nullopt;
  UIViewRef webView = GlobalVars::sharedInstance()._currentWebView();
  if (!webView) co_return std::nullopt;
  std::string script = row->script(command);
  co_return co_await row->call(std::move(webView), std::move(script));
}

std::string escapedForJavaScript(std::string_view text) {
  constexpr std::string_view kLineSeparator = "\u2028";
  constexpr std::string_view kParagraphSeparator = "\u2029";
  std::string escaped;
  escaped.reserve(text.size());
  while (!text.empty()) {
    std::size_t taken = 1;
    const char letter = text.front();
    if (text.starts_with(kLineSeparator) || text.starts_with(kParagraphSeparator)) {
      escaped += text.starts_with(kLineSeparator) ? "\\u2028" : "\\u2029";
      taken = kLineSeparator.size();
    } else if (static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F) {
      std::array<char, 5> code;
      std::snprintf(code.data(), code.size(), "\\x%02x", static_cast<unsigned>(letter));
      escaped += code.data();
    } else {
      if (letter == '\'' || letter == '"' || letter == '\\') escaped += '\\';
      escaped += letter;
    }
    text.remove_prefix(taken);
  }
  return escaped;
}

}  // namespace tarni
