#ifndef PLATFORM_HTEQCFAXMLWRITER_H
#define PLATFORM_HTEQCFAXMLWRITER_H

#include <string>

#include "platform/ZrPlatformExport.h"

class HPLCore;
class HPLPlatform;

namespace BasePlatform {
class Board;
class CFA;
class Core;
class GenAppInfo;
}  // namespace BasePlatform

// Writes an archive-backed hardware platform as the CFA XML document that
// HTEQCfaXmlReader reads: root version 1.15, GenAppInfo, then the CFA element
// with Host (only when the platform uses PR), Build, DesignIPs, Board,
// Devices, Files and FeatureRom. Flags are "true" or "false"; an optional
// attribute or element is written only when it would not be empty.
//
// The document is made whole in memory and validated against the schema
// before the file is touched; the file is then written through a temporary
// renamed over it, so an existing file is never left half-written.
//
// What a write followed by a read does not give back (the round-trip list):
//  - Host: written only when the platform uses PR; without PR the host
//    architecture and interface are lost. Their texts are the model's own
//    names ("unknown" for an unset one).
//  - PCIeId: written only when the platform uses PR or is a flat shell.
//  - Interfaces: the document holds one; of several, the last is kept.
//  - Values the getters compute are written as computed: the core's clock
//    frequency taken from its clock port, the core's resource counts summed
//    from its pblocks, the valid binary content values joined with ",".
//  - An empty list of valid binary content values is left out, and so reads
//    back as the default pair "dcp", "bitstream".
//  - DRBaseAddress of a core is written but not read back.
//  - The design intents come back computed from UsesPR; explicit intents are
//    lost.
//  - Board drivers are not written.
//  - Every compile and link switch is named "xp".
//  - The default binary format "rovapk2" is not written, nor an empty one:
//    both read back as the model's default, "rovapk2".
//  - Fixed is "false" for an expandable platform and "true" otherwise, always
//    written, so the reader's guess from the archive's members never applies.
//  - Only the first feature ROM is written; MaxTempLimit and MaxPowerLimit
//    only when not 0, and the four CDMA base addresses always.
//  - Images are written as exactly the three HDPI, MDPI and LDPI entries.
//
// Failures: a document that cannot be made (a required value missing, a text
// XML cannot carry, ComputeUnits above 255, a feature ROM name without its
// terminating zero) or that the schema refuses sends "@74-15@%s%s%s%s" and
// raises HXMLException; a file that cannot be written sends "@74-10@%s" and
// raises HXMLException. Nothing is written in either case.
class ZR_PLATFORM_API HTEQCfaXmlWriter {
 public:
  // The platform is not owned. Throws HEXAlgException when none is given.
  HTEQCfaXmlWriter(HPLPlatform* platform, const std::string& file);
  HTEQCfaXmlWriter(const HTEQCfaXmlWriter&) = delete;
  HTEQCfaXmlWriter& operator=(const HTEQCfaXmlWriter&) = delete;

  void writeCFA();
  // The document text writeCFA would write, with the same failures but
  // without writing anything.
  std::string toText();

 private:
  void writeGenAppInfo_(BasePlatform::GenAppInfo& info) const;
  void writeCFA_(BasePlatform::CFA& cfa) const;
  void writeHostArchitecture_(BasePlatform::CFA& cfa) const;
  void writeBuildFlow_(BasePlatform::CFA& cfa) const;
  void writeBoard_(BasePlatform::CFA& cfa) const;
  void writeInterfaces_(BasePlatform::Board& board) const;
  void writeMemories_(BasePlatform::Board& board) const;
  void writeConnectors_(BasePlatform::Board& board) const;
  void writeImages_(BasePlatform::Board& board) const;
  void writePCIeId_(BasePlatform::Board& board) const;
  void writeDesignIPs_(BasePlatform::CFA& cfa) const;
  void writeDevices_(BasePlatform::CFA& cfa) const;
  void writeCore_(const HPLCore& core, BasePlatform::Core& record) const;
  void writeFiles_(BasePlatform::CFA& cfa) const;
  void writeFeatureRom_(BasePlatform::CFA& cfa) const;

  HPLPlatform* platform_;
  std::string file_;
};

#endif
