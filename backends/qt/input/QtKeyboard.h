// QtKeyboard: a keyboard of the agent's own. Keys go through Qt's shortcuts to what has the focus,
// as a platform plug-in has them; text arrives as an input method commits it. GUI thread.
//
// Events are processed by Qt within the call, which may enter a nested loop of the program.
#pragma once

#include <QtCore/QString>
#include <string>
#include <string_view>

#include "platform/UIKit/UIView.h"

QT_BEGIN_NAMESPACE
class QObject;
class QWindow;
QT_END_NAMESPACE

namespace tarni::qt {

class QtKeyboard {
 public:
  struct Key {
    int code = 0;  // a Qt::Key
    QString text;  // that it types without Control
  };

  // By its name in the W3C's KeyboardEvent.key. Throws NSException for a name that is not one.
  static Key named(std::string_view name);

  // The other way round: what a key is called there that has typed `text`; empty for one without a
  // name.
  static std::string nameOf(int code, const QString& text);
  // What a key in that window goes to; null for nothing.
  static QObject* focusIn(const QWindow& window);

  // Whether anything took it.
  bool setKey(QWindow& window, const Key& key, bool isDown);
  // What has the focus may take no text from input methods: its characters are then keys. Throws
  // NSException (kTakesNoTextException) at the first of them that nothing takes.
  void commit(QWindow& window, const QString& text);

  Qt::KeyboardModifiers modifiers() const { return modifiers_; }

 private:
  QString typed(const Key& key) const;

  Qt::KeyboardModifiers modifiers_;
};

}  // namespace tarni::qt
