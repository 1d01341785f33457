#include "Platform/Linux/Clipboard/ClipboardThread.h"

#include <poll.h>
#include <pthread.h>
#include <sys/resource.h>

#include <iterator>
#include <utility>

namespace zephyx {
namespace {

constexpr int busyMachineNiceness = -10;
constexpr int retryMilliseconds = 200;

// A question that is dropped unanswered breaks its promise.
template <typename Result>
Result answerOr(std::future<Result> answer, Result nothing) {
  try {
    return answer.get();
  } catch (const std::future_error&) {
    return nothing;
  }
}

}  // namespace

ClipboardThread::ClipboardThread() {
  auto worker = ClipboardWorker::make();
  if (!worker) {
    isClosed_ = true;
    return;
  }
  thread_ = std::thread([this, worker = std::move(worker)]() mutable {
    pthread_setname_np(pthread_self(), "clipboard");
    // A copy can be read until the next one is made. Where the user may, be there first when the
    // machine is busy; where not, nothing changes.
    setpriority(PRIO_PROCESS, 0, busyMachineNiceness);
    run(std::move(worker));
  });
}

void ClipboardThread::stop() {
  if (!thread_.joinable()) return;
  isStopping_ = true;
  wake_.raise();
  thread_.join();
}

void ClipboardThread::run(std::unique_ptr<ClipboardWorker> worker) {
  for (;;) {
    // First: what is raised from here on, also for the end, keeps the worker from sleeping.
    wake_.lower();
    if (!worker->isConnected()) worker = connectAgain(std::move(worker));
    if (isStopping_) break;
    for (const auto& command : takeCommands()) command(*worker);
    announce(worker->step());
    worker->wait(wake_.descriptor());
  }
  close();
}

std::unique_ptr<ClipboardWorker> ClipboardThread::connectAgain(
    std::unique_ptr<ClipboardWorker> former) {
  std::vector<ClipboardNews> news;
  for (auto& saved : former->copies().giveUpSaving()) news.emplace_back(std::move(saved));
  announce(std::move(news));
  while (!isStopping_) {
    if (auto next = ClipboardWorker::make()) {
      next->resume(*former);
      return next;
    }
    pollfd wake{wake_.descriptor(), POLLIN, 0};
    poll(&wake, 1, retryMilliseconds);
    wake_.lower();
  }
  return nullptr;
}

void ClipboardThread::announce(std::vector<ClipboardNews> news) {
  if (news.empty()) return;
  {
    const std::lock_guard lock(mutex_);
    std::move(news.begin(), news.end(), std::back_inserter(news_));
  }
  announcement_.raise();
}

void ClipboardThread::close() {
  std::vector<Command> dropped;
  const std::lock_guard lock(mutex_);
  isClosed_ = true;
  dropped.swap(commands_);
}

bool ClipboardThread::post(Command command) {
  {
    const std::lock_guard lock(mutex_);
    if (isClosed_) return false;
    commands_.push_back(std::move(command));
  }
  wake_.raise();
  return true;
}

std::vector<ClipboardThread::Command> ClipboardThread::takeCommands() {
  const std::lock_guard lock(mutex_);
  return std::exchange(commands_, {});
}

std::optional<ClipboardNews> ClipboardThread::takeNews() {
  const std::lock_guard lock(mutex_);
  if (news_.empty()) return std::nullopt;
  auto next = std::move(news_.front());
  news_.pop_front();
  return next;
}

void ClipboardThread::setPlan(PasteboardReadPlan plan) {
  post([plan = std::make_shared<const PasteboardReadPlan>(std::move(plan))](
           ClipboardWorker& worker) { worker.copies().setPlan(plan); });
}

std::future<bool> ClipboardThread::own(std::shared_ptr<const OwnedContents> contents,
                                       std::uint64_t writeNumber) {
  auto result = std::make_shared<std::promise<bool>>();
  auto future = result->get_future();
  post([contents = std::move(contents), writeNumber,
        result = std::move(result)](ClipboardWorker& worker) {
    worker.own(contents, writeNumber, [result](bool isOwner) { result->set_value(isOwner); });
  });
  return future;
}

std::future<bool> ClipboardThread::ownPrimary(std::shared_ptr<const OwnedContents> contents) {
  auto result = std::make_shared<std::promise<bool>>();
  auto future = result->get_future();
  post([contents = std::move(contents), result = std::move(result)](ClipboardWorker& worker) {
    worker.ownPrimary(contents, [result](bool isOwner) { result->set_value(isOwner); });
  });
  return future;
}

std::uint64_t ClipboardThread::save() {
  const auto question = ++lastQuestion_;
  const bool isPosted =
      post([question](ClipboardWorker& worker) { worker.copies().save(question); });
  return isPosted ? question : 0;
}

bool ClipboardThread::takeSelectedText(xcb_window_t window) {
  return post([window](ClipboardWorker& worker) { worker.takeSelectedText(window); });
}

std::optional<SelectionPayload> ClipboardThread::fetch(std::uint64_t number,
                                                       const TypeOffer& offer) {
  using Result = std::optional<SelectionPayload>;
  auto result = std::make_shared<std::promise<Result>>();
  auto future = result->get_future();
  post([number, offer, result = std::move(result)](ClipboardWorker& worker) {
    worker.copies().fetch(number, offer,
                          [result](Result payload) { result->set_value(std::move(payload)); });
  });
  return answerOr<Result>(std::move(future), std::nullopt);
}

CopySnapshot ClipboardThread::readUnannounced() {
  auto result = std::make_shared<std::promise<CopySnapshot>>();
  auto future = result->get_future();
  post([result = std::move(result)](ClipboardWorker& worker) {
    worker.copies().readUnannounced(
        [result](CopySnapshot snapshot) { result->set_value(std::move(snapshot)); });
  });
  return answerOr<CopySnapshot>(std::move(future), {});
}

}  // namespace zephyx
