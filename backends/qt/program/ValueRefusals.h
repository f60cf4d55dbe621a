// What is said when a control does not take a value. Any thread.
#pragma once

#include <QtCore/QStringList>

namespace tarni::qt {

// Of many choices no more are named.
inline constexpr int kMostNamed = 50;

// "nothing can", or the first of them in quotes.
QString listed(const QStringList& choices);

// Throws NSException (invalid argument): the value cannot be chosen, but `choices`.
[[noreturn]] void refuseValue(const QString& value, const QString& choices);

// Throws NSException (invalid argument) when it is not.
void requireEnabled(bool isControlEnabled);

}  // namespace tarni::qt
