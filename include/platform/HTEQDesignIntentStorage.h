#ifndef PLATFORM_HTEQDESIGNINTENTSTORAGE_H
#define PLATFORM_HTEQDESIGNINTENTSTORAGE_H

#include "platform/JSONSerializable.h"

// What kind of system a platform is meant for. Each intent has a value a source
// declared (explicit) and one the tools worked out (computed); an explicit value
// always wins, whichever was set first.
class ZR_PLATFORM_API HTEQDesignIntentStorage : public teq_platform::JSONSerializable {
 public:
  enum Key { serverManaged = 1, externalHost = 2, embedded = 4, dataCenter = 8 };

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  bool getDataCenter() const { return value(kDataCenter); }
  bool getEmbedded() const { return value(kEmbedded); }
  bool getExternalHost() const { return value(kExternalHost); }
  bool getServerManaged() const { return value(kServerManaged); }
  bool isExplicit(Key key) const;

  // Keys other than the four above are ignored.
  void setExplicitValue(int key, bool value);
  void setComputedValue(int key, bool value);

 private:
  enum Slot { kDataCenter, kEmbedded, kExternalHost, kServerManaged, kSlots };
  struct Intent {
    bool explicitSet = false;
    bool explicitValue = false;
    bool computedValue = false;
  };
  static int slotOf(int key);
  bool value(Slot s) const {
    return intents_[s].explicitSet ? intents_[s].explicitValue : intents_[s].computedValue;
  }

  Intent intents_[kSlots];
};

#endif
