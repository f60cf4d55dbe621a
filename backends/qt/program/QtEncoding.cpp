#include "backends/qt/program/QtEncoding.h"

#include <QtCore/QByteArray>
#include <QtCore/QUuid>

namespace tarni::qt {

std::string QtEncoding::UUIDString() const {
  return QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper().toStdString();
}

std::string QtEncoding::base64EncodedString(std::span<const std::byte> data) const {
  const auto* const bytes = reinterpret_cast<const char*>(data.data());
  return QByteArray::fromRawData(bytes, static_cast<int>(data.size())).toBase64().toStdString();
}

}  // namespace tarni::qt
