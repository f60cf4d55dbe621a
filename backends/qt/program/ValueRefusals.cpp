#include "backends/qt/program/ValueRefusals.h"

#include "backends/qt/program/QtText.h"
#include "platform/Foundation/NSException.h"

namespace tarni::qt {

QString listed(const QStringList& choices) {
  if (choices.isEmpty()) return QStringLiteral("nothing can");
  const QString between = QStringLiteral("\", \"");
  const QString all =
      QLatin1Char('"') + choices.mid(0, kMostNamed).join(between) + QLatin1Char('"');
  return choices.size() > kMostNamed ? all + QStringLiteral(", …") : all;
}

void refuseValue(const QString& value, const QString& choices) {
  throw platform::NSException(
      platform::NSInvalidArgumentException,
      utf8(QStringLiteral("\"%1\" cannot be chosen here, but %2").arg(value, choices)));
}

void requireEnabled(bool isControlEnabled) {
  if (isControlEnabled) return;
  throw platform::NSException(platform::NSInvalidArgumentException, "The control is disabled");
}

}  // namespace tarni::qt
