#ifndef TESTS_SUPPORT_SCOPEDINSTANCE_H
#define TESTS_SUPPORT_SCOPEDINSTANCE_H

// Installs an object as a process-wide instance for the life of the guard and
// puts the previous one back afterwards, also when an assertion leaves the
// test early, so that no stack object stays installed after its scope.

#include "host/ComMsgMgr.h"
#include "host/HBOBoardCDataManager.h"
#include "host/HHSMHwManager.h"
#include "host/HUTEnv.h"

namespace zr_test {

// How each process-wide slot is read and written; install returns what it replaced.
template <class T>
struct InstanceSlot;

template <>
struct InstanceSlot<HUTEnv> {
  static HUTEnv* install(HUTEnv* env) {
    HUTEnv* previous = &HUTEnv::instance();
    HUTEnv::setInstance(env);
    return previous;
  }
};

template <>
struct InstanceSlot<HHSMHwManager> {
  static HHSMHwManager* install(HHSMHwManager* manager) {
    HHSMHwManager* previous = HHSMHwManager::getHsmHwManager();
    HHSMHwManager::setHsmHwManager(manager);
    return previous;
  }
};

template <>
struct InstanceSlot<ComMsgSink> {
  static ComMsgSink* install(ComMsgSink* sink) { return ComMsgMgrInstance().setSink(sink); }
};

template <class T>
class ScopedInstance {
 public:
  explicit ScopedInstance(T* mine) : previous_(InstanceSlot<T>::install(mine)) {}
  ~ScopedInstance() { InstanceSlot<T>::install(previous_); }
  ScopedInstance(const ScopedInstance&) = delete;
  ScopedInstance& operator=(const ScopedInstance&) = delete;

 private:
  T* previous_;
};

// Installs a board data store factory for the life of the guard.
class ScopedBoardStoreFactory {
 public:
  explicit ScopedBoardStoreFactory(HBOBoardCDataManager::Factory mine)
      : previous_(HBOBoardCDataManager::setFactory(mine)) {}
  ~ScopedBoardStoreFactory() { HBOBoardCDataManager::setFactory(previous_); }
  ScopedBoardStoreFactory(const ScopedBoardStoreFactory&) = delete;
  ScopedBoardStoreFactory& operator=(const ScopedBoardStoreFactory&) = delete;

 private:
  HBOBoardCDataManager::Factory previous_;
};

}  // namespace zr_test

#endif
