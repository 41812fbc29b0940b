#include "services/OrderedWork.h"

#include <system_error>
#include <utility>

namespace teq {
namespace platform {

OrderedWork::OrderedWork(std::size_t count, unsigned workers, Task task)
    : task_(std::move(task)),
      count_(count),
      window_(static_cast<std::size_t>(workers == 0 ? 1 : workers) * kInFlightPerWorker),
      slots_(window_),
      filled_(window_, 0) {
  for (unsigned w = 0; w < workers; ++w) {
    try {
      threads_.emplace_back(&OrderedWork::run_, this);
    } catch (const std::system_error&) {
      // The threads that did start do the work; with none, next() does it.
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

void OrderedWork::work_(std::size_t index, Result& result) const {
  try {
    result.output = std::make_unique<zr_output::DeferredOutput>();
    const zr_output::DeferredOutput::Scope scope(*result.output);
    task_(index, result);
  } catch (...) {
    result.error = std::current_exception();
  }
}

void OrderedWork::run_() {
  for (;;) {
    std::size_t index = 0;
    {
      std::unique_lock<std::mutex> lock(mutex_);
      room_.wait(lock, [this] { return stopping_ || claimed_ == count_ || claimed_ < taken_ + window_; });
      if (stopping_ || claimed_ == count_) return;
      index = claimed_++;
    }
    Result result;
    work_(index, result);
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      slots_[index % window_] = std::move(result);
      filled_[index % window_] = 1;
    }
    ready_.notify_one();
  }
}

bool OrderedWork::next(Result& result) {
  if (taken_ == count_) return false;
  if (threads_.empty()) {
    result = Result();
    work_(taken_++, result);
    return true;
  }
  {
    std::unique_lock<std::mutex> lock(mutex_);
    const std::size_t slot = taken_ % window_;
    ready_.wait(lock, [&] { return filled_[slot] != 0; });
    result = std::move(slots_[slot]);
    slots_[slot] = Result();
    filled_[slot] = 0;
    ++taken_;
  }
  room_.notify_all();
  return true;
}

}  // namespace platform
}  // namespace teq
