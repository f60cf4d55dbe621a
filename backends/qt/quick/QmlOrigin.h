// What the QML engine knows of an object. GUI thread.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

namespace tarni::qt {

// True for an object that a QML file of the application (or of a library of its) declares, false
// for what the toolkit's own files declare and for what C++ makes.
bool isDeclaredByApplication(const QObject& object);

// True for an object that some QML file declares.
bool isDeclared(const QObject& object);

// The id that the application's QML file gives the object; empty when it gives none.
QString idOf(const QObject& object);

// The object that the QML type of that class attached to it ("Accessible.name" is a property of
// one), or null.
const QObject* attachedObject(const QObject& object, const char* className);

}  // namespace tarni::qt
