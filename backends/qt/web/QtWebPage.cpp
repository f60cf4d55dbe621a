#include "backends/qt/web/QtWebPage.h"

#include <algorithm>
#include <optional>

#include "backends/qt/program/QtProgram.h"
#include "platform/Foundation/NSException.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::qt {
namespace {

constexpr double kPatienceSeconds = 2;

// What a script throws stays out of the page's console, which is the program's.
QString guarded(const std::string& script) {
  return QStringLiteral("try{") + QString::fromStdString(script) + QStringLiteral("\n}catch(e){}");
}

}  // namespace

struct QtWebPage::Evaluation {
  std::shared_ptr<Suspension> suspension = std::make_shared<Suspension>();
  std::optional<QString> answer;
  bool isLost = false;
};

void QtWebPage::setLoading(bool isLoading) {
  isLoading_ = isLoading;
  ++loads_;
  if (isLoading) isSilent_ = false;
}

void QtWebPage::processEnded() {
  platform::NSLog("The process of a web page has ended");
  isLoading_ = false;
  isSilent_ = true;
  for (const auto& evaluation : pending_) {
    evaluation->isLost = true;
    evaluation->suspension->resumeLater();
  }
}

void QtWebPage::answer(Evaluation& evaluation, const QString& text) {
  evaluation.answer = text;
  isSilent_ = false;
  evaluation.suspension->resumeLater();
}

platform::Task<std::string> QtWebPage::evaluate(std::string script) {
  if (isSilent_) co_return std::string();
  const auto self = shared_from_this();
  const auto evaluation = std::make_shared<Evaluation>();
  const int load = loads_;
  pending_.push_back(evaluation);
  Pause pause{evaluation->suspension,
              [self, evaluation, script = guarded(script)] {
                const bool isBegun = self->engine_(script, [self, evaluation](const QString& text) {
                  self->answer(*evaluation, text);
                });
                if (isBegun) return;
                evaluation->isLost = true;
                evaluation->suspension->resumeLater();
              },
              kPatienceSeconds};
  co_await pause;
  pending_.erase(std::find(pending_.begin(), pending_.end(), evaluation));
  if (evaluation->answer) co_return evaluation->answer->toStdString();
  if (evaluation->isLost) {
    throw platform::NSException(platform::NSGenericException, "the page is gone");
  }
  platform::NSLog("A web page does not answer: it is busy, or it shows an alert");
  // A page that has gone meanwhile took the answer along; the next one is not to blame.
  if (load == loads_) isSilent_ = true;
  co_return std::string();
}

}  // namespace tarni::qt
