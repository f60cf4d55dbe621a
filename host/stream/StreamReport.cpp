#include "host/stream/StreamReport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "host/guard/Printable.h"
#include "host/guard/Text.h"
#include "host/stream/Jpeg.h"
#include "host/stream/StreamReportStyle.h"

namespace tarni::host {

using Result = PlayedStreamStep::Result;

namespace {

std::string escaped(const std::string& text) {
  return asMarkup(printableLines(text));
}

std::string tag(const std::string& name, const std::string& attributes, const std::string& inner) {
  return "<" + name + (attributes.empty() ? "" : " " + attributes) + ">" + inner + "</" + name +
         ">\n";
}

std::string seconds(double value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.1f s", value);
  return text.data();
}

// "2025-01-31 12:00:00 UTC" of "2025-01-31T12:00:00Z"; any other text as it is.
std::string readableTime(std::string text) {
  constexpr std::size_t kDay = 10;
  if (text.size() != 20 || text[kDay] != 'T' || text.back() != 'Z') return text;
  text[kDay] = ' ';
  text.pop_back();
  return text + " UTC";
}

const char* styleOf(Result result) {
  if (result == Result::Passed) return "passed";
  return result == Result::NotPlayed ? "idle" : "failed";
}

bool isBase64(const std::string& text) {
  constexpr auto kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=";
  return !text.empty() && text.find_first_not_of(kAlphabet) == std::string::npos;
}

// "" when the text cannot be a picture.
std::string picture(const std::string& base64, const std::string& attributes) {
  if (!isBase64(base64)) return "";
  return "<img " + attributes + " src=\"data:image/jpeg;base64," + base64 + "\">";
}

// How many pixels a point has, told by the element's own picture; scales come in quarters.
double scaleOf(const ElementOnScreen& element) {
  const auto size = jpegSize(element.picture);
  if (!size || element.rectangle.width < 1) return 1;
  constexpr double kQuarters = 4;
  const double scale = std::round(size->width / element.rectangle.width * kQuarters) / kQuarters;
  return scale > 0 ? scale : 1;
}

// Drawn over the window's picture: an outline of the element.
std::string outline(const ElementOnScreen& element, const std::string& window) {
  const auto size = jpegSize(window);
  if (!size || element.rectangle.width <= 0) return "";
  const double scale = scaleOf(element);
  const auto& area = element.rectangle;
  std::array<char, 512> text{};
  std::snprintf(text.data(), text.size(),
                "<svg viewBox=\"0 0 %.2f %.2f\"><rect x=\"%.2f\" y=\"%.2f\" width=\"%.2f\" "
                "height=\"%.2f\" rx=\"3\"/></svg>",
                size->width / scale, size->height / scale, area.x, area.y, area.width, area.height);
  return text.data();
}

std::string shot(const char* caption, const std::string& base64, const std::string& overlay = "") {
  const auto image = picture(base64, std::string("alt=\"The window, ") + caption + "\"");
  if (image.empty()) return "";
  return tag("figure", "",
             tag("figcaption", "", caption) + tag("div", "class=\"shot\"", image + overlay));
}

std::string fact(const std::string& name, const std::string& value) {
  return tag("div", "", tag("dt", "", escaped(name)) + tag("dd", "", escaped(value)));
}

std::string anchor(const PlayedStreamStep& played) {
  return "step-" + std::to_string(played.step.number);
}

std::string strip(const PlayedStream& session) {
  std::string links;
  for (const auto& played : session.steps) {
    links += tag("a",
                 std::string("class=\"") + styleOf(played.result) + "\" href=\"#" + anchor(played) +
                     "\" title=\"" + std::to_string(played.step.number) + ": " +
                     escaped(played.step.element()) + "\"",
                 "");
  }
  return tag("nav", "class=\"strip\" aria-label=\"Steps\"", links);
}

std::string header(const PlayedStream& session) {
  const bool passed = session.hasPassed();
  std::string inner =
      tag("h1", "",
          escaped(session.file) + tag("span",
                                      passed ? "class=\"badge passed\"" : "class=\"badge failed\"",
                                      passed ? "Passed" : "Failed")) +
      tag("div", "class=\"line\"", escaped(session.program));
  std::string facts = fact("Played", session.played) + fact("Took", seconds(session.seconds)) +
                      fact("Steps passed", std::to_string(session.count(Result::Passed)) + " of " +
                                               std::to_string(session.steps.size()));
  if (!session.recorded.empty()) facts += fact("Recorded", readableTime(session.recorded));
  inner += tag("dl", "class=\"facts\"", facts) + strip(session);
  for (const auto& warning : session.warnings) {
    inner += tag("p", "class=\"warning\"", escaped(warning));
  }
  return tag("header", passed ? "class=\"passed\"" : "class=\"failed\"", tag("div", "", inner));
}

// A line may end before each part of the path, and not in the middle of a name.
std::string position(const std::string& xpath) {
  std::string html;
  for (const char c : escaped(xpath)) html += c == '\\' ? "<wbr>\\" : std::string(1, c);
  return html;
}

std::string top(const PlayedStreamStep& played) {
  const auto& step = played.step;
  auto line = escaped(step.action);
  if (played.located) line += std::string(" · found by ") + nameOf(played.located->by);
  return tag("div", "class=\"top\"",
             tag("div", "class=\"number\"", std::to_string(step.number)) +
                 tag("div", "class=\"what\"",
                     tag("h2", "", escaped(step.deed() + " " + step.element())) +
                         tag("div", "class=\"line\"", line) +
                         tag("div", "class=\"line\"", position(step.xpath))) +
                 picture(step.picture, "class=\"element\" alt=\"The element as recorded\"") +
                 tag("span", std::string("class=\"badge ") + styleOf(played.result) + "\"",
                     inWords(played.result)) +
                 tag("div", "class=\"time\"",
                     played.result == Result::NotPlayed ? "" : seconds(played.seconds)));
}

std::string lookedFor(const StreamStep& step) {
  std::string text = "class     " + step.className + "\n";
  if (!step.text.empty()) text += "text      " + inQuotes(step.text) + "\n";
  if (!step.id.empty()) text += "id        " + inQuotes(step.id) + "\n";
  if (!step.label.empty()) text += "label     " + inQuotes(step.label) + "\n";
  if (!step.xpath.empty()) text += "position  " + step.xpath + "\n";
  if (step.index) text += "index     " + std::to_string(*step.index) + "\n";
  return text;
}

std::string wereThere(const PlayedStreamStep& played) {
  if (played.sameClass.empty()) return "no " + played.step.className + " at all\n";
  std::string text;
  std::size_t index = 0;
  for (const auto& element : played.sameClass) {
    text += std::to_string(index++) + "  " + element.description() + "\n";
  }
  return text;
}

std::string folded(const std::string& title, const std::string& text, bool isOpen) {
  return tag("details", isOpen ? "open" : "",
             tag("summary", "", escaped(title)) + tag("pre", "", escaped(text)));
}

std::string failure(const PlayedStreamStep& played, const PlayedStream& session) {
  auto html = folded("What was looked for", lookedFor(played.step), true);
  if (!played.located)
    html += folded("Elements of the class that were there", wereThere(played), true);
  if (!session.tree.empty()) html += folded("View tree", session.tree, false);
  if (!session.output.empty()) html += folded("What the program printed", session.output, false);
  return html;
}

std::string card(const PlayedStreamStep& played, const PlayedStream& session) {
  const bool hasFailed = played.result == Result::Failed || played.result == Result::Lost;
  auto html = top(played);
  if (!played.message.empty()) {
    html += tag("p", hasFailed ? "class=\"why\"" : "class=\"note\"", escaped(played.message));
  }
  const auto overlay =
      played.located ? outline(played.located->element, played.before) : std::string();
  const auto pictures = shot("before", played.before, overlay) + shot("after", played.after);
  if (!pictures.empty()) html += tag("div", "class=\"pictures\"", pictures);
  if (hasFailed) html += failure(played, session);
  return tag(
      "section",
      std::string("class=\"step ") + styleOf(played.result) + "\" id=\"" + anchor(played) + "\"",
      html);
}

}  // namespace

bool PlayedStream::hasPassed() const {
  return count(Result::Passed) == steps.size();
}

std::size_t PlayedStream::count(Result result) const {
  return static_cast<std::size_t>(
      std::count_if(steps.begin(), steps.end(),
                    [result](const PlayedStreamStep& played) { return played.result == result; }));
}

std::string streamReportPage(const PlayedStream& session) {
  std::string cards;
  for (const auto& played : session.steps) cards += card(played, session);
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src "
         "data:; "
         "style-src 'unsafe-inline'\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
         tag("title", "", escaped((session.hasPassed() ? "Passed: " : "Failed: ") + session.file)) +
         tag("style", "", kReportStyle) + "</head>\n<body>\n" + header(session) +
         tag("main", "", cards) + "</body>\n</html>\n";
}

}  // namespace tarni::host
