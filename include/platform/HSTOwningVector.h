#ifndef PLATFORM_HSTOWNINGVECTOR_H
#define PLATFORM_HSTOWNINGVECTOR_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

// The list behind the model's children: it owns its elements and deletes them
// when it goes, while readers see the plain vector of raw pointers that the
// model's getters hand out. Elements come in through std::unique_ptr, so an
// append that throws deletes the element instead of leaking it. Not copyable:
// two copies would delete the same elements.
template <class T>
class HSTOwningVector {
 public:
  using View = std::vector<T*>;
  using const_iterator = typename View::const_iterator;

  HSTOwningVector() = default;
  ~HSTOwningVector() { clear(); }
  HSTOwningVector(const HSTOwningVector&) = delete;
  HSTOwningVector& operator=(const HSTOwningVector&) = delete;

  // Appends the element, now owned here, and gives it back. When the append
  // throws, the element is deleted and the list is unchanged.
  T* add(std::unique_ptr<T> item) {
    items_.push_back(item.get());
    return item.release();
  }
  // A new element built from `args`, appended.
  template <class... Args>
  T* emplace(Args&&... args) {
    return add(std::make_unique<T>(std::forward<Args>(args)...));
  }

  // Takes the element out and deletes it; false when it is not here.
  bool erase(const T* item) {
    auto it = std::find(items_.begin(), items_.end(), item);
    if (it == items_.end()) return false;
    T* doomed = *it;
    items_.erase(it);
    destroy_(doomed);
    return true;
  }
  // Deletes every element. The list is already empty while they are deleted,
  // so an element's destructor never sees a dangling neighbour.
  void clear() noexcept {
    View doomed;
    doomed.swap(items_);
    for (T* p : doomed) destroy_(p);
  }
  void swap(HSTOwningVector& other) noexcept { items_.swap(other.items_); }

  // The elements, still owned here.
  const View& view() const { return items_; }
  const_iterator begin() const { return items_.begin(); }
  const_iterator end() const { return items_.end(); }
  std::size_t size() const { return items_.size(); }
  bool empty() const { return items_.empty(); }
  T* front() const { return items_.front(); }
  T* back() const { return items_.back(); }
  T* operator[](std::size_t i) const { return items_[i]; }
  T* at(std::size_t i) const { return items_.at(i); }

 private:
  // The one place an element is deleted.
  static void destroy_(T* p) noexcept {
    static_assert(sizeof(T) > 0, "an owned element's type must be complete where it is deleted");
    delete p;
  }

  View items_;
};

#endif
