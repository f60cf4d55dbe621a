// The agent's own widgets (highlights), which have no view and are left out of every walk. What is
// inside of one needs no mark, for no walk gets there. GUI thread.
#pragma once

#include <QtCore/qglobal.h>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarni::qt {

void hideFromWalks(QWidget* widget);
bool isHiddenFromWalks(const QWidget* widget);

}  // namespace tarni::qt
