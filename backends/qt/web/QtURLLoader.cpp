#include "backends/qt/web/QtURLLoader.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkProxy>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <memory>

#include "backends/qt/QtProgram.h"

namespace tarni::qt {
namespace {

constexpr int kFetchPatienceSeconds = 5;

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
  std::optional<std::string> text;
};

void begin(const std::string& url, const std::shared_ptr<Fetch>& fetch) {
  QNetworkRequest request(QUrl(QString::fromStdString(url)));
  request.setTransferTimeout(kFetchPatienceSeconds * 1000);
  QNetworkReply* const reply = manager().get(request);
  QObject::connect(reply, &QNetworkReply::finished, reply, [reply, fetch] {
    reply->deleteLater();
    if (reply->error() == QNetworkReply::NoError) fetch->text = reply->readAll().toStdString();
    fetch->suspension->resumeLater();
  });
}

}  // namespace

platform::Task<std::optional<std::string>> QtURLLoader::stringWithContentsOfURL(std::string url) {
  const auto fetch = std::make_shared<Fetch>();
  Pause pause{fetch->suspension, [fetch, url] { begin(url, fetch); }, kFetchPatienceSeconds};
  co_await pause;
  co_return std::move(fetch->text);
}

}  // namespace tarni::qt
