/* The wrapped classes, read from their public headers. */

/* Objects of the model belong to the library (a platform, the manager or a
   partition deletes them): Java can neither make nor delete them. */
%define ZR_JNI_MODEL_OWNED(CLASS)
%nodefaultctor CLASS;
%nodefaultdtor CLASS;
%ignore CLASS::CLASS;
%ignore CLASS::~CLASS;
%enddef
ZR_JNI_MODEL_OWNED(HTEQPlatform)
ZR_JNI_MODEL_OWNED(HTEQHardwarePlatform)
ZR_JNI_MODEL_OWNED(HTEQSoftwarePlatform)
ZR_JNI_MODEL_OWNED(HTEQSystemConfig)
ZR_JNI_MODEL_OWNED(HTEQSystemClock)
ZR_JNI_MODEL_OWNED(HTEQProcessorGroup)
ZR_JNI_MODEL_OWNED(HTEQBootImg)
ZR_JNI_MODEL_OWNED(HTEQTilHardware)
ZR_JNI_MODEL_OWNED(HTEQReconfigurablePartition)
%nodefaultdtor teq_platform::JSONSerializable;
%ignore teq_platform::JSONSerializable::~JSONSerializable;

/* Every create...Iter of the model gives the caller a new iterator. */
%newobject HTEQPlatformMgr::createPlatformIter;
%newobject HTEQHardwarePlatform::createSystemClockIter;
%newobject HTEQHardwarePlatform::createIPParamIter;
%newobject HTEQHardwarePlatform::createNocConnectivityIter;
%newobject HTEQHardwarePlatform::createBusInterfaceIter;
%newobject HTEQHardwarePlatform::createFeatureRomIter;
%newobject HTEQHardwarePlatform::createDesignIPInstanceIter;

%include "platform/JSONSerializable.h"
%include "platform/JSONWriter.h"
%include "platform/JSONListWriter.h"
/* The writer's member templates are C++ only; SWIG reads the overloads that
   Java can tell apart. */
namespace teq_platform {
class JSONObjectWriter : public JSONWriter {
 public:
  void addKey(const std::string& key, const std::string& value);
  void addKey(const std::string& key, bool value);
  void addKey(const std::string& key, const JSONWriter& child);
  void addKey(const std::string& key, const JSONSerializable* object);
  void addKey(const std::string& key, const boost::property_tree::ptree& tree);
  void writeObject(const JSONSerializable& object);
};
}  // namespace teq_platform
%include "platform/HTEQTilHardware.h"
%include "platform/HTEQReconfigurablePartition.h"
%include "platform/HTEQSystemClock.h"
%include "platform/HTEQBootImg.h"
%include "platform/HTEQProcessorGroup.h"
%include "platform/HTEQSystemConfig.h"
%include "platform/HTEQSoftwarePlatform.h"
%include "platform/HTEQHardwarePlatform.h"
%include "platform/HTEQPlatform.h"
%include "platform/HTEQPlatformMgr.h"
/* A Java parameter named "platform" would hide the JNI class of that name in
   the proxies; only the Java side sees parameter names. */
#define platform platformObject
%include "platform/HTEQPlatformUtils.h"
%include "platform/HTEQSoftwarePlatformUtils.h"
%include "platform/HTEQPlatformHelper.h"
#undef platform
%include "platform/HDFToCFAConverter.h"
%include "platform/CatalogService.h"
%include "platform/NativeCatalogService.h"
/* The object service's tree type comes from its interface, which Java does
   not see. */
namespace teq {
namespace platform {
%ignore ObjectService;
class ObjectService {
 public:
  typedef boost::property_tree::ptree Tree;
};
}  // namespace platform
}  // namespace teq
%include "platform/NativeObjectService.h"
