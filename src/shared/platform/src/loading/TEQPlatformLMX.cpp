#include "loading/TEQPlatformLMX.h"

#include <cstdlib>

#include "host/HSTStringUtils.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(zdf)

namespace TEQPlatform {

namespace {

FileRef fileRef(const zr_xml::Node& n) { return FileRef{n.attr("path"), n.attr("name")}; }

// The schema has checked the range; blanks around a number are allowed.
long integer(const std::string& text) { return std::strtol(HSTStringUtils::trim(text).c_str(), nullptr, 10); }

AnonHardwarePlatform anonHardware(const zr_xml::Node& parent) {
  AnonHardwarePlatform a;
  a.hardwarePlatform = fileRef(parent.child("hardwarePlatform"));
  if (const auto emu = parent.child("hwEmuPlatform"))
    a.hwEmuPlatform = std::make_unique<FileRef>(fileRef(emu));
  return a;
}

}  // namespace

namespace {

Platform fromDocument(const zr_xml::Document& doc) {
  const auto root = doc.root();
  Platform p;
  p.vendor = root.attr("vendor");
  p.library = root.attr("library");
  p.name = root.attr("name");
  p.version = HSTStringUtils::trim(root.attr("version"));
  p.hasSchemaVersion = root.hasAttr("schemaVersion");
  p.schemaVersion = HSTStringUtils::trim(root.attr("schemaVersion"));
  p.description = root.child("description").text();

  if (const auto hw = root.child("hardwarePlatforms")) {
    auto h = std::make_unique<HardwarePlatforms>();
    h->hasDefaultRP = hw.hasAttr("defaultRP");
    h->defaultRP = integer(hw.attr("defaultRP"));
    if (hw.child("hardwarePlatform")) {
      h->choice = 0;
      h->anon = anonHardware(hw);
    } else if (hw.child("reconfigurablePartition")) {
      h->choice = 2;
      for (const auto& rpNode : hw.children("reconfigurablePartition")) {
        ReconfigurablePartition rp;
        rp.id = integer(rpNode.attr("id"));
        if (rpNode.child("hardwarePlatform")) {
          rp.choice = 0;
          rp.anon = anonHardware(rpNode);
        } else {
          rp.choice = 1;
          rp.hwEmuPlatform = fileRef(rpNode.child("hwEmuPlatform"));
        }
        h->reconfigurablePartitions.push_back(std::move(rp));
      }
    } else {
      h->choice = 1;
      h->hwEmuPlatform = fileRef(hw.child("hwEmuPlatform"));
    }
    p.hardwarePlatforms = std::move(h);
  }
  if (const auto sw = root.child("softwarePlatforms")) {
    p.softwarePlatforms = std::make_unique<SoftwarePlatforms>();
    p.softwarePlatforms->softwarePlatform = fileRef(sw.child("softwarePlatform"));
  }
  return p;
}

}  // namespace

Platform unmarshalFile(const std::string& path) {
  return fromDocument(zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(zdf)));
}

Platform unmarshalMemory(const std::string& text, const std::string& name) {
  return fromDocument(zr_xml::Document::parseMemory(text, name, ZR_XML_SCHEMA(zdf)));
}

}  // namespace TEQPlatform
