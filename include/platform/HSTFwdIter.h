#ifndef PLATFORM_HSTFWDITER_H
#define PLATFORM_HSTFWDITER_H

#include <vector>

#include "platform/ZrPlatformExport.h"

// A forward iterator handed out by create...Iter operations; the caller owns it.
template <class T>
class HSTFwdIter {
 public:
  virtual ~HSTFwdIter() = default;
  virtual bool isDone() const = 0;
  virtual void next() = 0;
  virtual T current() const = 0;
};

// A forward iterator over a vector that the model owns.
template <class T>
class HSTFwdSTLIter : public HSTFwdIter<T> {
 public:
  explicit HSTFwdSTLIter(const std::vector<T>& v) : it_(v.begin()), end_(v.end()) {}
  bool isDone() const override { return it_ == end_; }
  void next() override { ++it_; }
  T current() const override { return *it_; }

 private:
  typename std::vector<T>::const_iterator it_;
  typename std::vector<T>::const_iterator end_;
};

#endif
