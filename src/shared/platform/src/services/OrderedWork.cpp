#include "services/OrderedWork.h"

#include <system_error>
#include <utility>

namespace teq {
namespace platform {

OrderedWork::OrderedWork(unsigned workers, Task task)
    : task_(std::move(task)),
      window_(static_cast<std::size_t>(workers == 0 ? 1 : workers) * kInFlightPerWorker),
      slots_(window_),
      filled_(window_, 0) {
  // The taking thread is the first worker.
  for (unsigned w = 1; w < workers; ++w) {
    try {
      threads_.emplace_back(&OrderedWork::run_, this);
    } catch (const std::system_error&) {
      // The threads that did start do the work, with the taking thread.
      break;
    }
  }
}

OrderedWork::~OrderedWork() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  room_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void OrderedWork::add(const std::string& item) {
  const std::lock_guard<std::mutex> lock(mutex_);
  items_.push_back(item);
  if (workersWaiting_ > 0) room_.notify_one();
}

std::size_t OrderedWork::close() {
  std::size_t count = 0;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    closed_ = true;
    count = items_.size();
  }
  room_.notify_all();
  return count;
}

void OrderedWork::work_(const std::string& item, Result& result) const {
  try {
    result.output = std::make_unique<zr_output::DeferredOutput>();
    const zr_output::DeferredOutput::Scope scope(*result.output);
    task_(item, result);
  } catch (...) {
    result.error = std::current_exception();
  }
}

void OrderedWork::claimAndWork_(std::unique_lock<std::mutex>& lock) {
  const std::size_t index = claimed_++;
  const std::string item = items_[index];
  lock.unlock();
  Result result;
  work_(item, result);
  lock.lock();
  slots_[index % window_] = std::move(result);
  filled_[index % window_] = 1;
  if (takerWaits_ && index == taken_) ready_.notify_one();
}

void OrderedWork::run_() {
  std::unique_lock<std::mutex> lock(mutex_);
  for (;;) {
    if (stopping_ || (closed_ && claimed_ == items_.size())) return;
    if (canClaim_()) {
      claimAndWork_(lock);
      continue;
    }
    ++workersWaiting_;
    room_.wait(lock);
    --workersWaiting_;
  }
}

bool OrderedWork::next(Result& result) {
  std::unique_lock<std::mutex> lock(mutex_);
  if (taken_ == items_.size()) return false;
  const std::size_t slot = taken_ % window_;
  while (filled_[slot] == 0) {
    if (canClaim_()) {
      claimAndWork_(lock);
      continue;
    }
    takerWaits_ = true;
    ready_.wait(lock);
    takerWaits_ = false;
  }
  result = std::move(slots_[slot]);
  slots_[slot] = Result();
  filled_[slot] = 0;
  ++taken_;
  if (workersWaiting_ > 0) room_.notify_one();
  return true;
}

}  // namespace platform
}  // namespace teq
