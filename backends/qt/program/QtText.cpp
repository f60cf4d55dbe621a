#include "backends/qt/program/QtText.h"

#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>

namespace tarni::qt {

std::string utf8(const QString& text) {
  return text.toStdString();
}

std::optional<std::string> nonEmpty(const QString& text) {
  if (text.isEmpty()) return std::nullopt;
  return utf8(text);
}

QString withoutMnemonic(const QString& text) {
  if (!text.contains(QLatin1Char('&'))) return text;
  QString plain;
  plain.reserve(text.size());
  for (auto at = text.begin(); at != text.end(); ++at) {
    if (*at == QLatin1Char('&')) ++at;
    if (at == text.end()) break;
    plain.append(*at);
  }
  return plain;
}

QString withoutMarkup(const QString& text, Qt::TextFormat format) {
  if (format == Qt::MarkdownText) {
    QTextDocument document;
    document.setMarkdown(text);
    return document.toPlainText();
  }
  const bool rich = format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text));
  return rich ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

std::string checkText(bool checked) {
  return checked ? "checked" : "not checked";
}

}  // namespace tarni::qt
