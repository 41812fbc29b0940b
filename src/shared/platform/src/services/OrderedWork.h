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

// Items 0..count-1 worked on by a few threads and handed back in their own
// order. A worker's messages and console words are kept with its result and
// replayed by whoever takes the result; what the task throws is kept too. At
// most a few results per worker are in flight: a worker waits while the
// oldest ones are not taken.
class OrderedWork {
 public:
  struct Result {
    bool included = false;
    std::string text;
    std::exception_ptr error;
    std::unique_ptr<zr_output::DeferredOutput> output;
  };
  using Task = std::function<void(std::size_t index, Result& result)>;

  OrderedWork(std::size_t count, unsigned workers, Task task);
  // Stops the workers after their current item and waits for them.
  ~OrderedWork();
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  // The next item's result, once ready; false after the last.
  bool next(Result& result);

 private:
  static constexpr std::size_t kInFlightPerWorker = 4;

  void run_();
  void work_(std::size_t index, Result& result) const;

  Task task_;
  std::size_t count_;
  std::size_t window_;
  std::mutex mutex_;
  std::condition_variable ready_;
  std::condition_variable room_;
  std::size_t claimed_ = 0;
  std::size_t taken_ = 0;
  bool stopping_ = false;
  std::vector<Result> slots_;
  std::vector<char> filled_;
  std::vector<std::thread> threads_;
};

}  // namespace platform
}  // namespace teq

#endif
