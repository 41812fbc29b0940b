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
/* The utility classes are all static, and the catalog interface is deleted
   through its implementation: none of them is made or deleted from Java. */
%nodefaultctor HTEQPlatformUtils;
%nodefaultdtor HTEQPlatformUtils;
%nodefaultctor HTEQSoftwarePlatformUtils;
%nodefaultdtor HTEQSoftwarePlatformUtils;
%nodefaultdtor teq::platform::CatalogService;
%ignore teq::platform::CatalogService::~CatalogService;

%nodefaultdtor teq_platform::JSONSerializable;
%ignore teq_platform::JSONSerializable::~JSONSerializable;

/* Enum values are compiled into the Java proxies, not read through calls. */
%javaconst(1);

/* Fixed-width integers stay opaque as arguments; the values the model answers
   in them come back as Java numbers, since an opaque result could neither be
   read nor freed from Java. */
%apply unsigned int {
  uint32_t getDesignID, uint32_t getParentID, uint32_t getNodeID, uint32_t getFunctionID,
  uint32_t getTILPlInterfaceID, uint32_t getTILNodeID, uint32_t getTILUniqueID, uint32_t getTILPuID,
  uint32_t getNodeIDFromLfa, uint32_t getNpiBaseAddress
};
%apply unsigned long long { uint64_t getHBMBankCount, uint64_t getHBMDefaultBankCount };

/* Operations that take ownership of an object, or make another object delete
   it: Java only holds objects the model already owns, so a call would free
   one object twice. */
%ignore HTEQPlatform::addReconfigurablePartition;
%ignore HTEQPlatform::addSoftwarePlatform;
%ignore HTEQPlatform::setHardwarePlatform;
%ignore HTEQPlatform::setHardwareEmulationPlatform;
%ignore HTEQPlatform::setDefaultRPHardwarePlatform;
%ignore HTEQPlatform::setDefaultRPHardwareEmulationPlatform;
%ignore HTEQReconfigurablePartition::setHardwarePlatform;
%ignore HTEQReconfigurablePartition::setHardwareEmulationPlatform;

/* Results Java could not use or free: iterator pairs, property trees made by
   value, hardware databases made for the caller, internal trees and streams,
   and out-parameters of types Java cannot make (a std::string, bool, tree or
   map to fill, a progress callback). */
%ignore HTEQHardwarePlatform::getFeatureRomVecRange;
%ignore HTEQHardwarePlatform::createHwDb;
%ignore HTEQHardwarePlatform::getExtMetaJsonAsPtree;
%ignore HTEQHardwarePlatform::parseMetaData;
%ignore teq_platform::JSONWriter::getTree;
%ignore teq_platform::JSONWriter::getOtherTree;
%ignore teq_platform::JSONWriter::write;
%ignore teq::platform::NativeObjectService::PathToken;
%ignore teq::platform::NativeObjectService::scanJsonPath;
%ignore teq::platform::NativeObjectService::getAsPropertyTree;
%ignore teq::platform::NativeObjectService::getNodeByPath;
%ignore teq::platform::NativeObjectService::getChild;
%ignore teq::platform::NativeObjectService::getChildOptional;
%ignore teq::platform::NativeObjectService::getStringValue;
%ignore teq::platform::NativeObjectService::getBoolValue;
%ignore teq::platform::NativeObjectService::getObjectsByPath(const std::string&, const std::string&, bool&) const;
%ignore teq::platform::NativeObjectService::getObjectsByPath(teq_platform::PlatformLoader*, const std::string&, bool&) const;
%ignore teq::platform::NativeObjectService::getHwPlatformRootPath(const Tree&) const;
%ignore teq::platform::NativeObjectService::hasNodeAtPath(const Tree&, const std::string&) const;
%ignore teq::platform::NativeObjectService::hasLegacyHwPlatformRootPath(const Tree&) const;
%ignore teq::platform::NativeObjectService::getPathWithActualHwPlatformRoot(const Tree&, const std::string&) const;
%ignore teq::platform::NativeObjectService::_getHwPlatformRootPath;
%ignore teq::platform::NativeObjectService::getHwMetadataMode;
%ignore teq::platform::NativeCatalogService::getAllAsJsonStr(const std::string&, bool, const Progress&) const;
%ignore teq::platform::NativeCatalogService::getPlatformInfo_;
%ignore teq::platform::NativeCatalogService::getCompilerVersion_;
%ignore teq::platform::NativeCatalogService::setTestCompilerVersion_;
%ignore teq::platform::NativeCatalogService::isUnderWarranty;
%ignore teq::platform::NativeCatalogService::isPreSynthPlatformSupported;
%ignore teq::platform::NativeCatalogService::canCfaBeOpened;
%ignore teq::platform::NativeCatalogService::getPlatformVersion;
%ignore teq::platform::NativeCatalogService::getColor;

/* Of a const and a non-const overload Java gets the const one; a Java string
   goes to the std::string overload, never through char*. */
%ignore HTEQHardwarePlatform::getDesignIntent();
%ignore HTEQHardwarePlatform::getTilHardware();
%ignore HTEQHardwarePlatform::getTilPartitions();
%ignore teq_platform::JSONListWriter::addItem(const char*);
%ignore teq_platform::JSONListWriter::addItem(JSONWriter&&);
%warnfilter(SWIGWARN_TYPE_UNDEFINED_CLASS) teq::platform::NativeObjectService;

/* The IDE takes platforms and hardware platforms as they are, not as
   JSONSerializable: their proxies stand alone and have no upcast. */
%typemap(javabase, replace = "1") HTEQPlatform, HTEQHardwarePlatform ""

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
