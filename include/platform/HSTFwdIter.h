#ifndef PLATFORM_HSTFWDITER_H
#define PLATFORM_HSTFWDITER_H

#include <vector>

// A forward iterator handed out by the model's create...Iter operations. The
// caller owns the iterator and deletes it; the elements stay owned by the model.
template <class T>
class HSTFwdIter {
 public:
  virtual ~HSTFwdIter() = default;
  virtual bool hasNext() const = 0;
  // The current element; the iterator then moves on. Only valid while hasNext().
  virtual T next() = 0;
};

// The iterator over a range of a standard container. It copies the two
// positions, so the container must not change while it is in use.
template <class T, class Iter = typename std::vector<T>::const_iterator>
class HSTFwdSTLIter : public HSTFwdIter<T> {
 public:
  HSTFwdSTLIter(Iter begin, Iter end) : more_(begin != end), cur_(begin), end_(end) {}
  bool hasNext() const override { return more_; }
  T next() override {
    T value = *cur_;
    ++cur_;
    if (cur_ == end_) more_ = false;
    return value;
  }

 private:
  bool more_;
  Iter cur_;
  Iter end_;
};

// A new iterator over the whole vector, owned by the caller.
template <class T>
HSTFwdIter<T>* HSTCreateFwdIter(const std::vector<T>& v) {
  return new HSTFwdSTLIter<T>(v.begin(), v.end());
}

#endif
