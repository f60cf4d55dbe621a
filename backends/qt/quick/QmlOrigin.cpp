#include "backends/qt/quick/QmlOrigin.h"

#include <QtCore/qglobal.h>
#include <private/qqmldata_p.h>
#if QT_VERSION_MAJOR >= 6
#include <private/qqmlcontextdata_p.h>
#else
#include <private/qqmlcontext_p.h>
#endif

#include <QtCore/QUrl>
#include <QtQml/QQmlContext>

namespace tarni::qt {
namespace {

// Of the file that declares the object, not of the file that its type is made in.
QQmlContextData* declaringContext(const QObject& object) {
  const QQmlData* const data = QQmlData::get(&object);
  return data ? data->outerContext : nullptr;
}

// The toolkit's modules all begin with its name, wherever they are installed.
bool isToolkitFile(const QUrl& url) {
  const QString path = url.path();
  for (const auto* const folder : {"/qml/Qt", "/imports/Qt"}) {
    if (path.contains(QLatin1String(folder))) return true;
  }
  return url.scheme() == QLatin1String("qrc") && path.startsWith(QLatin1String("/QtQuick/"));
}

}  // namespace

bool isDeclared(const QObject& object) {
  return declaringContext(object) != nullptr;
}

bool isDeclaredByApplication(const QObject& object) {
  QQmlContextData* const context = declaringContext(object);
  return context && !isToolkitFile(context->url());
}

// Qt 6's own search takes the name of a property that holds the object, as activeFocusControl, for
// an id.
QString idOf(const QObject& object) {
  if (!isDeclaredByApplication(object)) return {};
  const QQmlContextData& context = *declaringContext(object);
#if QT_VERSION_MAJOR >= 6
  for (int index = 0; index < context.numIdValues(); ++index) {
    if (context.idValue(index) == &object) return context.propertyName(index);
  }
  return {};
#else
  return context.findObjectId(&object);
#endif
}

const QObject* attachedObject(const QObject& object, const char* className) {
  for (const QObject* const child : object.children()) {
    if (child->inherits(className)) return child;
  }
  return nullptr;
}

}  // namespace tarni::qt
