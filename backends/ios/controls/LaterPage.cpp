#include "backends/ios/controls/LaterPage.h"

#include <coroutine>
#include <utility>

#include "backends/ios/system/Queue.h"
#include "platform/Foundation/NSException.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::ios {
namespace {

constexpr double kPatienceSeconds = 2;

}  // namespace

// One script on its way, and who waits for its answer.
struct LaterPage::Evaluation {
  enum class State { Open, Answered, GivenUp };

  explicit Evaluation(std::shared_ptr<LaterPage> asked) : page(std::move(asked)) {}

  void end(State how) {
    state = how;
    if (waiting) std::exchange(waiting, {}).resume();
  }

  void take(std::optional<std::string> answer) {
    page->state_ = answer ? LaterPage::State::Answers : LaterPage::State::Gone;
    if (state != State::Open) return;
    text = std::move(answer);
    end(State::Answered);
  }

  void giveUp() {
    if (state != State::Open) return;
    platform::NSLog("A web page does not answer: it is busy, or it shows an alert");
    page->state_ = LaterPage::State::Busy;
    end(State::GivenUp);
  }

  const std::shared_ptr<LaterPage> page;
  State state = State::Open;
  std::optional<std::string> text;
  std::coroutine_handle<> waiting;
};

// g++ 12 copies what is awaited, so it is apart from what is kept.
struct LaterPage::End {
  bool await_ready() const noexcept { return evaluation->state != Evaluation::State::Open; }
  void await_suspend(std::coroutine_handle<> asking) const noexcept {
    evaluation->waiting = asking;
  }
  void await_resume() const noexcept {}

  std::shared_ptr<Evaluation> evaluation;
};

platform::Task<std::string> LaterPage::evaluate(Send send) {
  if (isSilent()) co_return std::string();
  const auto evaluation = std::make_shared<Evaluation>(shared_from_this());
  send([evaluation](std::optional<std::string> text) { evaluation->take(std::move(text)); });
  // Not over the agent's own main queue, which holds still while somebody waits for a page.
  dispatch_after_f(timeIn(kPatienceSeconds), dispatch_get_main_queue(),
                   new std::shared_ptr(evaluation), [](void* context) {
                     const std::unique_ptr<std::shared_ptr<Evaluation>> late(
                         static_cast<std::shared_ptr<Evaluation>*>(context));
                     (*late)->giveUp();
                   });
  const End end{evaluation};
  co_await end;
  if (evaluation->state == Evaluation::State::GivenUp) co_return std::string();
  if (!evaluation->text) {
    throw platform::NSException(platform::NSGenericException, "the page is gone");
  }
  co_return *evaluation->text;
}

}  // namespace tarni::ios
