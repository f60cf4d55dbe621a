// What both programs show first: the address that they are given, or else the page of an order,
// from beside the program.
#pragma once

#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QUrl>

inline QUrl startPage() {
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() > 1) return QUrl::fromUserInput(arguments.at(1), QDir::currentPath());
  const QString pages = QStringLiteral("/../share/tarni/pages/form.html");
  return QUrl::fromLocalFile(QDir::cleanPath(QCoreApplication::applicationDirPath() + pages));
}

// The engine's own sandbox does not work for root.
inline void letEngineRunAsRoot() {
  if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}
