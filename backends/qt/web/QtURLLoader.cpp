#include "backends/qt/web/QtURLLoader.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkProxy>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <memory>

#include "backends/qt/program/QtProgram.h"

namespace tarni::qt {
namespace {

constexpr int kFetchPatienceSeconds = 5;
constexpr int kRestSeconds = 30;

// Goes with the application object, before the toolkit's own parts do.
QNetworkAccessManager& manager() {
  static QNetworkAccessManager* shared = nullptr;
  if (!shared) {
    shared = new QNetworkAccessManager(QCoreApplication::instance());
    // A proxy is for what the program wants from the network.
    shared->setProxy(QNetworkProxy(QNetworkProxy::NoProxy));
    QObject::connect(shared, &QObject::destroyed, [] { shared = nullptr; });
  }
  return *shared;
}

struct Fetch {
  std::shared_ptr<Suspension> suspension = std::make_shared<Suspension>();
  bool isAnswered = false;
  std::optional<std::string> text;
};

// Null for bytes that are not UTF-8.
std::optional<std::string> textOf(const QByteArray& bytes) {
  const QByteArray text = QString::fromUtf8(bytes).toUtf8();
  // A byte-order mark has gone.
  if (!bytes.endsWith(text)) return std::nullopt;
  return text.toStdString();
}

void begin(const QUrl& url, const std::shared_ptr<Fetch>& fetch) {
  QNetworkRequest request(url);
  request.setTransferTimeout(kFetchPatienceSeconds * 1000);
  // Qt 5 follows none otherwise.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::NoLessSafeRedirectPolicy);
  QNetworkReply* const reply = manager().get(request);
  QObject::connect(reply, &QNetworkReply::finished, reply, [reply, fetch] {
    reply->deleteLater();
    // A time-out cancels.
    fetch->isAnswered = reply->error() != QNetworkReply::OperationCanceledError;
    if (reply->error() == QNetworkReply::NoError) fetch->text = textOf(reply->readAll());
    fetch->suspension->resumeLater();
  });
}

}  // namespace

platform::Task<std::optional<std::string>> QtURLLoader::stringWithContentsOfURL(std::string url) {
  const QUrl address(QString::fromStdString(url));
  if (address.authority() == silentServer_ && !rest_.hasExpired()) co_return std::nullopt;
  const auto fetch = std::make_shared<Fetch>();
  Pause pause{fetch->suspension, [fetch, address] { begin(address, fetch); },
              kFetchPatienceSeconds};
  co_await pause;
  if (!fetch->isAnswered) {
    silentServer_ = address.authority();
    rest_.setRemainingTime(kRestSeconds * 1000);
  }
  co_return std::move(fetch->text);
}

}  // namespace tarni::qt
