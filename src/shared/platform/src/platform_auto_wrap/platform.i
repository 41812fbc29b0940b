/* The JVM binding: the native entry points of the Java class
   ui.data.platform.platform, over the classes the IDE reads platforms
   through. The library is loaded by the host, never by the module itself. */
%module(jniclassname = "platform") platform

%{
#include <stdexcept>

#include "host/HEXAll.h"
#include "platform/CatalogService.h"
#include "platform/HDFToCFAConverter.h"
#include "platform/HPLDevice.h"
#include "platform/HTEQBootImg.h"
#include "platform/HTEQDevice.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformHelper.h"
#include "platform/HTEQPlatformMgr.h"
#include "platform/HTEQPlatformUtils.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSoftwarePlatformUtils.h"
#include "platform/HTEQSystemClock.h"
#include "platform/HTEQSystemConfig.h"
#include "platform/HTEQTilHardware.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"
#include "platform/JSONSerializable.h"
#include "platform/JSONWriter.h"
#include "platform/NativeCatalogService.h"
#include "platform/NativeObjectService.h"
#include "platform_auto_wrap/ZrJni.h"
%}

/* Loading the library is the host's job: the JNI class has no static block. */
%pragma(java) jniclasscode = ""
%pragma(java) moduleimports = ""

/* The public signatures' own names for the standard vector and string. */
#define ZR_PLATFORM_API
#define HSTVector std::vector
typedef std::string HSTString;
namespace std {
class string;
}

%include "exceptions.i"
%include "strings.i"
%include "renames.i"

class HTEQPlatform;
class HTEQHardwarePlatform;
class HTEQSoftwarePlatform;
class HTEQSystemConfig;
class HTEQSystemClock;
class HTEQProcessorGroup;
class HTEQBootImg;
class HTEQReconfigurablePartition;

%include "containers.i"
%include "classes.i"
