#ifndef PLATFORM_HTEQHPFMREADER_H
#define PLATFORM_HTEQHPFMREADER_H

#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQHardwarePlatform;
class HTEQHardwareBusInterface;
class HXMLException;

namespace WELHardwarePlatform {
class Repository;
class Component;
class DeviceInfo;
class SystemClocks;
class Parameter;
class BusInterface;
class BusInterfaceAddressSegment;
class NocConnectivity;
}  // namespace WELHardwarePlatform

// Reads a hardware platform file (hpfm) into an HTEQHardwarePlatform that the
// caller owns: identity the platform still lacks, its description, resource
// counts, clocks, IP parameters, bus interfaces with their address segments
// (counting the banks of high-bandwidth memory) and NoC connectivity.
//
// The text comes from the constructor (an archive member) or from a file
// named by setPlatformFile. A document that cannot be read or breaks the
// format makes the parse return false, with the reason in getErrorMsg(), on
// standard output and as a message; nothing is thrown.
class ZR_PLATFORM_API HTEQHpfmReader {
 public:
  // An empty text prints "CRITICAL WARNING: Empty hpfm string passed in" on
  // standard output; the reader is usable all the same (its text parses as
  // no document). A null platform is allowed: the parses then only check the
  // document.
  HTEQHpfmReader(std::string hpfm, HTEQHardwarePlatform* platform);

  // The file that parseFile reads.
  void setPlatformFile(const std::string& file);

  // Reads the file given to setPlatformFile and fills the platform; on
  // success the platform's file becomes that file. Failures send "@74-12@"
  // with the reason and line number.
  bool parseFile();
  // Reads the text given at construction and fills the platform. Failures
  // replace the error text and send "@74-31@".
  bool parseStream();
  // Read the text given at construction and only add the component's bus
  // interfaces, or only its NoC connectivity records, to the platform.
  // Failures are reported as for parseStream.
  bool parseBusInterfaces();
  bool parseNocConnectivity();

  // Fills the platform from a document already read.
  void parseRepository(const WELHardwarePlatform::Repository& repository);

  // Parses the text given at construction into `repository` without filling
  // the platform, so that one parse can serve several fills. Failures are
  // reported as for parseStream.
  bool parseDocument(WELHardwarePlatform::Repository& repository);
  // Add only the component's bus interfaces, or only its NoC connectivity
  // records, of a document already read.
  void addBusInterfaces(const WELHardwarePlatform::Repository& repository);
  void addNocConnectivity(const WELHardwarePlatform::Repository& repository);

  // Everything reported so far; empty until a failure.
  const std::string& getErrorMsg() const { return errorMsg_; }

 private:
  enum class Scope { kAll, kBusInterfaces, kNocConnectivity };

  bool parseText_(Scope scope);
  void reportStreamFailure_(const HXMLException& e);
  void parseComponent_(const WELHardwarePlatform::Component& component);
  void parseDeviceInfo_(const WELHardwarePlatform::DeviceInfo& info);
  void parseSystemClocks_(const WELHardwarePlatform::SystemClocks& clocks);
  void parseParam_(const WELHardwarePlatform::Parameter& param);
  void parseBusInterface_(const WELHardwarePlatform::BusInterface& record, HTEQHardwareBusInterface* target);
  void parseAddressSegment_(const WELHardwarePlatform::BusInterfaceAddressSegment& record,
                            HTEQHardwareBusInterface* target);
  void parseNocConnectivity_(const WELHardwarePlatform::NocConnectivity& record);

  HTEQHardwarePlatform* platform_;
  std::string platformFile_;
  std::string hpfm_;
  std::string errorMsg_;
};

#endif
