// QtExtension: what an optional library of this backend adds for a library of the toolkit that not
// every program has (Qt Quick, the web engine). GUI thread only.
//
// An extension is a shared library beside the agent's own. It is loaded as soon as the process has
// the toolkit's library mapped, which may be long after the program's start.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backends/qt/views/QtView.h"
#include "platform/Foundation/NSURLLoader.h"

namespace tarni::qt {

class QtExtension {
 public:
  virtual ~QtExtension() = default;

  // The window-kind view of a window that no widget draws; null when it is not of the extension.
  // The same view as long as the window lives.
  virtual platform::UIWindowRef viewOfWindow(QWindow&) { return nullptr; }
  // The view of an object that is not a widget, the item with the focus; null when it is not of the
  // extension.
  virtual platform::UIViewRef viewOfObject(QObject&) { return nullptr; }
  // A view for a widget of which the extension knows more than that it is a widget; null for all
  // others. Asked once a widget.
  virtual std::shared_ptr<QtView> makeView(QWidget&) { return nullptr; }
  // What reads texts from addresses; null when the library brings no network along.
  virtual platform::NSURLLoader* urlLoader() { return nullptr; }
};

// Every extension's library exports a function of this name and type. The extension lives as long
// as the process.
inline constexpr const char* kMakeExtension = "tarniMakeQtExtension";
using MakeExtension = QtExtension* (*)();

class QtExtensions {
 public:
  // From now on extensions are loaded from that folder when the process can use them. A library
  // that is missing or does not fit leaves a log line.
  void loadFrom(std::string folder) { folder_ = std::move(folder); }
  void add(std::unique_ptr<QtExtension> extension);

  platform::UIWindowRef viewOfWindow(QWindow& window);
  platform::UIViewRef viewOfObject(QObject& object) const;
  std::shared_ptr<QtView> makeView(QWidget& widget);
  platform::NSURLLoader* urlLoader();

 private:
  platform::UIWindowRef askForWindow(QWindow& window) const;
  void loadMapped();
  void load(const std::string& path);

  std::string folder_;              // empty until extensions may be loaded
  std::vector<std::size_t> tried_;  // indexes of known libraries
  unsigned long long mappedAtLastLook_ = 0;
  std::vector<std::unique_ptr<QtExtension>> extensions_;
};

// The one set of the process, never destroyed.
QtExtensions& extensions();

}  // namespace tarni::qt
