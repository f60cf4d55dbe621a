// Starts the agent in a Qt program: from the first event loop that runs once the application object
// exists, at once when it exists already. A process without windows gets no agent.
#include <dlfcn.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <exception>
#include <filesystem>

#include "backends/posix/SystemLog.h"
#include "backends/qt/QtPlatform.h"
#include "backends/qt/views/QtExtension.h"
#include "entry/StartAgent.h"

namespace {

void logLine(const char* line) noexcept {
  try {
    static auto* const log = new tarni::posix::SystemLog;
    log->write(line);
  } catch (...) {
  }
}

// The folder of this library.
std::string ownFolder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&logLine), &info) == 0 || !info.dli_fname) return "";
  return std::filesystem::absolute(info.dli_fname).parent_path();
}

// The address of the page scripts that were installed or built with the library in that folder; ""
// for none.
std::string scriptsBeside(const std::string& library) {
  for (const char* const up : {"/../..", "/.."}) {
    const std::filesystem::path folder = library + up + "/share/tarni/webscripts";
    std::error_code none;
    if (std::filesystem::is_directory(folder, none)) {
      return "file://" + folder.lexically_normal().string();
    }
  }
  return "";
}

void start() noexcept {
  if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
    logLine("The program has no windows: the agent is not started");
    return;
  }
  try {
    const std::string folder = ownFolder();
    tarni::qt::extensions().loadFrom(folder);
    tarni::entry::startAgent(tarni::qt::qtPlatform(), scriptsBeside(folder));
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                     [] { tarni::entry::endAgent(); });
  } catch (const std::exception& failure) {
    logLine(failure.what());
  } catch (...) {
    logLine("The agent cannot start");
  }
}

// The application object is still being made when Qt calls this: it is not a QGuiApplication yet.
void startLater() {
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [] { start(); }, Qt::QueuedConnection);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(startLater)
