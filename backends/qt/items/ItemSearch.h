// Looks for an item of a model by its text, whether or not it is on screen. GUI thread.
#pragma once

#include <QtCore/QModelIndex>

QT_BEGIN_NAMESPACE
class QAbstractItemView;
QT_END_NAMESPACE

namespace tarni::qt {

// The first one in reading order, of a tree also below nodes that are closed; what the model loads
// as it is asked for is loaded below the root and the open nodes only. Invalid when there is none.
// Throws NSException when the model is too slow or too large to be looked through.
QModelIndex itemWithText(const QAbstractItemView& view, const QString& text);

}  // namespace tarni::qt
