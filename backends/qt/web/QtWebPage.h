// QtWebPage: the page in a web view, as scripts are evaluated in it: each evaluation waits for its
// answer while the program runs, and no longer than a page may be busy.
//
// A page that has not answered in time (it is busy, or shows an alert) counts as silent until it
// does answer or loads another page: nothing more is asked of it, so that it is waited for once
// only. GUI thread.
#pragma once

#include <QtCore/QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Task.h"

namespace tarni::qt {

class QtWebPage : public std::enable_shared_from_this<QtWebPage> {
 public:
  using Answered = std::function<void(const QString&)>;
  // Begins an evaluation; false when there is no page any more.
  using Engine = std::function<bool(const QString& script, Answered answered)>;

  explicit QtWebPage(Engine engine) : engine_(std::move(engine)) {}

  void setLoading(bool isLoading);
  // The process behind the page has ended: what waits for it fails, and it is silent.
  void processEnded();
  bool isLoading() const { return isLoading_; }
  bool isSilent() const { return isSilent_; }

  // The script's value as text; empty for a script that throws, and for a page that is or becomes
  // silent: whoever asks is after native views as well. Throws NSException when the page's process
  // ends meanwhile.
  platform::Task<std::string> evaluate(std::string script);

 private:
  struct Evaluation;

  void answer(Evaluation& evaluation, const QString& text);

  const Engine engine_;
  bool isLoading_ = false;
  bool isSilent_ = false;
  int loads_ = 0;  // begun or ended
  std::vector<std::shared_ptr<Evaluation>> pending_;
};

}  // namespace tarni::qt
