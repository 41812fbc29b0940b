#ifndef HOST_ZROWNED_H
#define HOST_ZROWNED_H

// Owners for the C handles the library holds: archives, members and sources of
// the zip library, documents and schema contexts of the XML library, digest
// contexts, file descriptors. Each owner frees its handle exactly once, on
// every path out of the scope that holds it, and cannot be copied; release()
// hands the handle to a function that takes it over.

#include <unistd.h>

#include <memory>
#include <utility>

namespace zr_owned {

// The deleter of an owner: calls the free function `Free` of the C library.
template <auto Free>
struct Deleter {
  template <class T>
  void operator()(T* handle) const {
    Free(handle);
  }
};

// A handle of type T* freed by `Free`: Owned<zip_t, zip_discard>.
template <class T, auto Free>
using Owned = std::unique_ptr<T, Deleter<Free>>;

// An open file descriptor, closed once.
class Fd {
 public:
  Fd() = default;
  explicit Fd(int fd) : fd_(fd) {}
  ~Fd() { reset(); }
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  Fd(Fd&& other) noexcept : fd_(other.release()) {}
  Fd& operator=(Fd&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }

  int get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }
  int release() { return std::exchange(fd_, -1); }
  void reset(int fd = -1) {
    if (fd_ >= 0) ::close(fd_);
    fd_ = fd;
  }

 private:
  int fd_ = -1;
};

}  // namespace zr_owned

#endif
