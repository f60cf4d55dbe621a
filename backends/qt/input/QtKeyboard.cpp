#include "backends/qt/input/QtKeyboard.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QCursor>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <iterator>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/program/QtText.h"
#include "platform/Foundation/NSException.h"
#include "platform/UIKit/InputDevices.h"

namespace tarni::qt {
namespace {

using Interface = QWindowSystemInterfacePrivate;

struct NamedKey {
  std::string_view name;
  Qt::Key code;
  const char* text = "";
};

constexpr NamedKey kNamed[] = {
    {"Alt", Qt::Key_Alt},
    {"AltGraph", Qt::Key_AltGr},
    {"ArrowDown", Qt::Key_Down},
    {"ArrowLeft", Qt::Key_Left},
    {"ArrowRight", Qt::Key_Right},
    {"ArrowUp", Qt::Key_Up},
    {"AudioVolumeDown", Qt::Key_VolumeDown},
    {"AudioVolumeMute", Qt::Key_VolumeMute},
    {"AudioVolumeUp", Qt::Key_VolumeUp},
    {"Backspace", Qt::Key_Backspace, "\b"},
    {"BrowserBack", Qt::Key_Back},
    {"BrowserForward", Qt::Key_Forward},
    {"BrowserHome", Qt::Key_HomePage},
    {"BrowserRefresh", Qt::Key_Refresh},
    {"BrowserSearch", Qt::Key_Search},
    {"BrowserStop", Qt::Key_Stop},
    {"Cancel", Qt::Key_Cancel},
    {"CapsLock", Qt::Key_CapsLock},
    {"Clear", Qt::Key_Clear},
    {"ContextMenu", Qt::Key_Menu},
    {"Control", Qt::Key_Control},
    {"Copy", Qt::Key_Copy},
    {"Cut", Qt::Key_Cut},
    {"Delete", Qt::Key_Delete, "\x7f"},
    {"End", Qt::Key_End},
    {"Enter", Qt::Key_Return, "\r"},
    {"Escape", Qt::Key_Escape, "\x1b"},
    {"Execute", Qt::Key_Execute},
    {"Find", Qt::Key_Find},
    {"Help", Qt::Key_Help},
    {"Home", Qt::Key_Home},
    {"Insert", Qt::Key_Insert},
    {"MediaPlayPause", Qt::Key_MediaTogglePlayPause},
    {"MediaStop", Qt::Key_MediaStop},
    {"MediaTrackNext", Qt::Key_MediaNext},
    {"MediaTrackPrevious", Qt::Key_MediaPrevious},
    {"Meta", Qt::Key_Meta},
    {"NumLock", Qt::Key_NumLock},
    {"Open", Qt::Key_Open},
    {"PageDown", Qt::Key_PageDown},
    {"PageUp", Qt::Key_PageUp},
    {"Paste", Qt::Key_Paste},
    {"Pause", Qt::Key_Pause},
    {"Print", Qt::Key_Printer},
    {"PrintScreen", Qt::Key_Print},
    {"Redo", Qt::Key_Redo},
    {"Save", Qt::Key_Save},
    {"ScrollLock", Qt::Key_ScrollLock},
    {"Select", Qt::Key_Select},
    {"Shift", Qt::Key_Shift},
    {"Tab", Qt::Key_Tab, "\t"},
    {"Undo", Qt::Key_Undo},
    {"ZoomIn", Qt::Key_ZoomIn},
    {"ZoomOut", Qt::Key_ZoomOut},
};

constexpr int kFunctionKeys = 35;

// "F1" to "F35"; 0 for anything else.
int functionKey(const QString& name) {
  bool isNumber = false;
  const int number = name.mid(1).toInt(&isNumber);
  const bool isOne = name.startsWith(QLatin1Char('F')) && isNumber && number >= 1;
  return isOne && number <= kFunctionKeys ? Qt::Key_F1 + number - 1 : 0;
}

QtKeyboard::Key keyOfCharacter(uint character) {
  return {
    static_cast<int>(QChar::toUpper(character)), QString::fromUcs4(
#if QT_VERSION_MAJOR >= 6
                                                     reinterpret_cast<const char32_t*>(&character),
#else
                                                     &character,
#endif
                                                     1)
  };
}

QtKeyboard::Key keyTyping(uint character) {
  if (character == '\n') return QtKeyboard::named("Enter");
  if (character == '\t') return QtKeyboard::named("Tab");
  return keyOfCharacter(character);
}

Qt::KeyboardModifier modifierOf(int code) {
  switch (code) {
    case Qt::Key_Shift:
      return Qt::ShiftModifier;
    case Qt::Key_Control:
      return Qt::ControlModifier;
    case Qt::Key_Alt:
      return Qt::AltModifier;
    case Qt::Key_Meta:
      return Qt::MetaModifier;
    default:
      return Qt::NoModifier;
  }
}

bool takesInputMethods(QObject* focus) {
  QInputMethodQueryEvent query(Qt::ImEnabled);
  return focus && QCoreApplication::sendEvent(focus, &query) && query.value(Qt::ImEnabled).toBool();
}

[[noreturn]] void refuseText() {
  throw platform::NSException(platform::kTakesNoTextException, "What has the focus takes no text");
}

void openContextMenu(QWindow& window, Qt::KeyboardModifiers modifiers) {
  const QPoint onScreen = QCursor::pos();
  Interface::ContextMenuEvent event(&window, false, window.mapFromGlobal(onScreen), onScreen,
                                    modifiers);
  process(event);
}

}  // namespace

QtKeyboard::Key QtKeyboard::named(std::string_view name) {
  const auto* const known = std::ranges::lower_bound(kNamed, name, {}, &NamedKey::name);
  if (known != std::end(kNamed) && known->name == name) {
    return {known->code, QString::fromLatin1(known->text)};
  }
  const QString text = QString::fromUtf8(name.data(), static_cast<int>(name.size()));
  if (const int code = functionKey(text)) return {code, {}};
  const auto characters = text.toUcs4();
  const bool isOne = characters.size() == 1 && !QChar::isNonCharacter(characters[0]);
  if (isOne && QChar::category(characters[0]) != QChar::Other_Control) {
    return keyOfCharacter(characters[0]);
  }
  throw platform::NSException(platform::NSInvalidArgumentException,
                              "There is no key \"" + std::string(name) + "\"");
}

std::string QtKeyboard::nameOf(int code, const QString& text) {
  if (code == Qt::Key_Backtab) code = Qt::Key_Tab;
  if (code == Qt::Key_Enter) code = Qt::Key_Return;
  const auto* const known =
      std::ranges::find(kNamed, code, [](const NamedKey& key) { return int(key.code); });
  if (known != std::end(kNamed)) return std::string(known->name);
  if (code >= Qt::Key_F1 && code < Qt::Key_F1 + kFunctionKeys) {
    return "F" + std::to_string(code - Qt::Key_F1 + 1);
  }
  // With Control the text is a control character.
  const bool isPrintable = !text.isEmpty() && text.at(0).isPrint();
  if (isPrintable) return utf8(text);
  const bool isCharacter = code >= Qt::Key_Space && code < Qt::Key_Escape;
  return isCharacter ? utf8(QString(QChar(code)).toLower()) : std::string();
}

// A popup has the keyboard while the window system's focus stays where it was.
QObject* QtKeyboard::focusIn(const QWindow& window) {
  const QWidget* const popup = QApplication::activePopupWidget();
  if (!popup) return window.focusObject();
  return popup->focusWidget() ? popup->focusWidget() : const_cast<QWidget*>(popup);
}

// As a platform plug-in tells it: the state from before a modifier changed.
bool QtKeyboard::setKey(QWindow& window, const Key& key, bool isDown) {
  const Qt::KeyboardModifiers before = modifiers_;
  modifiers_.setFlag(modifierOf(key.code), isDown);
  const bool isBackTab = key.code == Qt::Key_Tab && before.testFlag(Qt::ShiftModifier);
  const QPointer<QWindow> getsIt = &window;
  Interface::KeyEvent event(&window, static_cast<ulong>(Interface::eventTime.elapsed()),
                            isDown ? QEvent::KeyPress : QEvent::KeyRelease,
                            isBackTab ? int(Qt::Key_Backtab) : key.code, before, typed(key));
  process(event);
  if (isDown && key.code == Qt::Key_Menu && getsIt) openContextMenu(*getsIt, before);
  return event.eventAccepted;
}

void QtKeyboard::commit(QWindow& window, const QString& text) {
  QObject* const focus = focusIn(window);
  if (takesInputMethods(focus)) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(focus, &event);
    return;
  }
  const QPointer<QWindow> getsIt = &window;
  bool isTaken = text.isEmpty();
  for (const uint character : text.toUcs4()) {
    // What is not printed, as a line's end, many do not take that take text.
    isTaken = setKey(*getsIt, keyTyping(character), true) || !QChar::isPrint(character) || isTaken;
    if (getsIt) setKey(*getsIt, keyTyping(character), false);
    if (!getsIt) return;
  }
  if (!isTaken) refuseText();
}

QString QtKeyboard::typed(const Key& key) const {
  const bool isLatin = key.code >= Qt::Key_A && key.code <= Qt::Key_Z;
  if (modifiers_.testFlag(Qt::ControlModifier) && isLatin) return QChar(key.code - Qt::Key_A + 1);
  if (!modifiers_.testFlag(Qt::ShiftModifier)) return key.text;
  const QString upper = key.text.toUpper();
  return upper.size() == key.text.size() ? upper : key.text;
}

}  // namespace tarni::qt
