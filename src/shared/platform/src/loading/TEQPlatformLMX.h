#ifndef PLATFORM_TEQPLATFORMLMX_H
#define PLATFORM_TEQPLATFORMLMX_H

// Records of the platform descriptor (.zdf). They live only between parsing a
// descriptor and filling an HTEQPlatform from it.

#include <memory>
#include <string>
#include <vector>

namespace TEQPlatform {

// teq:hardwarePlatform, teq:hwEmuPlatform and teq:softwarePlatform: a file named
// by a directory relative to the descriptor and a file name in it.
struct FileRef {
  std::string path;
  std::string name;
};
using HardwarePlatform = FileRef;
using HwEmuPlatform = FileRef;
using SoftwarePlatform = FileRef;

// Choice 0 of teq:hardwarePlatforms and of a partition.
struct AnonHardwarePlatform {
  HardwarePlatform hardwarePlatform;
  std::unique_ptr<HwEmuPlatform> hwEmuPlatform;
};
using ReconfigurablePartitionAnonHardwarePlatform = AnonHardwarePlatform;

struct ReconfigurablePartition {
  long id = 0;
  int choice = 0;  // 0: hardware (+ emulation), 1: emulation only
  ReconfigurablePartitionAnonHardwarePlatform anon;
  HwEmuPlatform hwEmuPlatform;
};

struct HardwarePlatforms {
  bool hasDefaultRP = false;
  long defaultRP = 0;
  int choice = 0;  // 0: hardware (+ emulation), 1: emulation only, 2: partitions
  AnonHardwarePlatform anon;
  HwEmuPlatform hwEmuPlatform;
  std::vector<ReconfigurablePartition> reconfigurablePartitions;
};

struct SoftwarePlatforms {
  SoftwarePlatform softwarePlatform;
};

struct Platform {
  std::string vendor;
  std::string library;
  std::string name;
  std::string version;
  bool hasSchemaVersion = false;
  std::string schemaVersion;
  std::string description;
  std::unique_ptr<HardwarePlatforms> hardwarePlatforms;
  std::unique_ptr<SoftwarePlatforms> softwarePlatforms;
};

// Parses and validates a descriptor file into records. Throws HXMLException
// (with a line number where there is one) for anything that is not a valid
// descriptor.
Platform unmarshalFile(const std::string& path);
// The same for a document in memory; `name` appears in error texts.
Platform unmarshalMemory(const std::string& text, const std::string& name);

}  // namespace TEQPlatform

#endif
