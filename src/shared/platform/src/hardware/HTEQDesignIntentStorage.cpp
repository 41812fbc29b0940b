#include "platform/HTEQDesignIntentStorage.h"

#include "platform/JSONObjectWriter.h"

int HTEQDesignIntentStorage::slotOf(int key) {
  switch (key) {
    case dataCenter:
      return kDataCenter;
    case embedded:
      return kEmbedded;
    case externalHost:
      return kExternalHost;
    case serverManaged:
      return kServerManaged;
    default:
      return -1;
  }
}

bool HTEQDesignIntentStorage::isExplicit(Key key) const {
  const int s = slotOf(key);
  return s >= 0 && intents_[s].explicitSet;
}

void HTEQDesignIntentStorage::setExplicitValue(int key, bool v) {
  const int s = slotOf(key);
  if (s < 0) return;
  intents_[s].explicitValue = v;
  intents_[s].explicitSet = true;
}

void HTEQDesignIntentStorage::setComputedValue(int key, bool v) {
  const int s = slotOf(key);
  if (s < 0) return;
  intents_[s].computedValue = v;
}

void HTEQDesignIntentStorage::toJSON(teq_platform::JSONObjectWriter& writer) const {
  static const char* const names[kSlots] = {"dataCenter", "embedded", "externalHost", "serverManaged"};
  teq_platform::JSONObjectWriter intents;
  for (int s = 0; s < kSlots; ++s) {
    teq_platform::JSONObjectWriter one;
    one.addKey("value", value(static_cast<Slot>(s)));
    one.addKey("explicit", intents_[s].explicitSet);
    intents.addKey(names[s], std::move(one));
  }
  writer.addKey("designIntent", std::move(intents));
}
