#ifndef SERVICES_ORDEREDWORK_H
#define SERVICES_ORDEREDWORK_H

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "ZrDeferredOutput.h"

namespace teq {
namespace platform {

// Items worked on by a few threads and handed back in the order they were
// added. Items may be added while the first ones are being worked on; the
// results are taken once every item is in (close()). The thread that takes
// the results is one of the workers: while the next result is not ready it
// works on an item itself, so that `workers` threads in all are busy and
// none waits for another without need. Each item's messages and console
// words are kept with its result and replayed by whoever takes the result;
// what the task throws is kept too. At most kInFlightPerWorker results per
// worker are in flight: a worker waits while the oldest ones are not taken.
class OrderedWork {
 public:
  struct Result {
    bool included = false;
    std::string text;
    std::exception_ptr error;
    std::unique_ptr<zr_output::DeferredOutput> output;
  };
  using Task = std::function<void(const std::string& item, Result& result)>;

  OrderedWork(unsigned workers, Task task);
  // Stops the workers after their current item and waits for them.
  ~OrderedWork();
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  void add(const std::string& item);
  // No more items; answers how many there are.
  std::size_t close();
  // After close(): the next item's result, once ready; false after the last.
  bool next(Result& result);

 private:
  static constexpr std::size_t kInFlightPerWorker = 32;

  void run_();
  void work_(const std::string& item, Result& result) const;
  // Under the lock: whether an item may be started now.
  bool canClaim_() const { return claimed_ < items_.size() && claimed_ < taken_ + window_; }
  // Under the lock: works on the next item, unlocking meanwhile.
  void claimAndWork_(std::unique_lock<std::mutex>& lock);

  Task task_;
  std::size_t window_;
  std::mutex mutex_;
  std::condition_variable ready_;
  std::condition_variable room_;
  std::vector<std::string> items_;
  std::size_t claimed_ = 0;
  std::size_t taken_ = 0;
  bool closed_ = false;
  bool stopping_ = false;
  bool takerWaits_ = false;
  unsigned workersWaiting_ = 0;
  std::vector<Result> slots_;
  std::vector<char> filled_;
  std::vector<std::thread> threads_;
};

}  // namespace platform
}  // namespace teq

#endif
