// ObjectEnds: tells when objects of the toolkit have ended. By the toolkit's own hook for tools, as
// a connection to each of them would take more memory than all else that is kept of it, and a
// program can cut that. GUI thread.
#pragma once

#include <QtCore/qglobal.h>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace tarni::qt {

// `forget` is called with the address of every object that ends on this thread from now on, when
// nothing of it is left but the address. Once for each `forget`.
void whenObjectsEnd(void (*forget)(const QObject* gone));

}  // namespace tarni::qt
