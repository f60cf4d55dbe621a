// Texts of the toolkit as the seam wants them: UTF-8, nil for empty, without mnemonics and markup.
// Any thread.
#pragma once

#include <QtCore/QString>
#include <optional>
#include <string>

namespace tarni::qt {

std::string utf8(const QString& text);

// Null for the empty text.
std::optional<std::string> nonEmpty(const QString& text);

// "&Open…" without its mnemonic mark; "&&" is a plain "&".
QString withoutMnemonic(const QString& text);

// What is read on screen of a text that may be rich text or Markdown. GUI thread.
QString withoutMarkup(const QString& text, Qt::TextFormat format = Qt::AutoText);

// How a check mark is read out.
std::string checkText(bool checked);

}  // namespace tarni::qt
