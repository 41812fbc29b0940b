#ifndef PLATFORM_TEQSOFTWAREPLATFORMLMX_H
#define PLATFORM_TEQSOFTWAREPLATFORMLMX_H

// Records of the software platform file (.spfm), one per element and named
// after it. They hold the text of the document as wide strings; each attribute
// keeps whether the document set it, since the reader copies optional
// attributes into the model only when they are there.

#include <optional>
#include <string>
#include <vector>

namespace TEQSoftwarePlatform {

// One attribute: its value and whether the document gave it. An absent
// attribute reads as the empty string.
class Attribute {
 public:
  bool isSet() const { return set_; }
  const std::wstring& get() const { return value_; }
  void set(const std::wstring& value) {
    value_ = value;
    set_ = true;
  }
  void unset() {
    value_.clear();
    set_ = false;
  }

 private:
  std::wstring value_;
  bool set_ = false;
};

struct Prebuilt {
  Attribute data;
};

struct Image {
  Attribute name;
  Attribute type;
  Attribute bif;
  Attribute imageData;
  Attribute bootmode;
  Attribute rootfs;
  Attribute mountPath;
  Attribute readme;
  Attribute qemuDevicetree;
  Attribute qemuBoot;
  Attribute qemuArguments;
  Attribute hwBootBin;
};

struct BootImages {
  Attribute defaultImage;  // teq:default
  Image image;
};

struct Os {
  Attribute name;
  Attribute displayName;
  Attribute hypervisorGuest;
  Attribute includePaths;
  Attribute libraryPaths;
  Attribute libraryNames;
  Attribute ldscript;
  Attribute sysRoot;
  Attribute bspConfig;
  Attribute bspLibraryPaths;
  Attribute bspIncludePaths;
  Attribute bspRepo;
  Attribute compilerOptions;
  Attribute linkerOptions;
  Attribute osDependency;
  Attribute crossCompilerType;
  Attribute toolConfig;
};

struct ProcessorGroup {
  Attribute name;
  Attribute displayName;
  Attribute cpuType;
  Attribute architecture;
  Attribute cpuInstance;
  Os os;
};

struct Configuration {
  Attribute name;
  Attribute displayName;
  Attribute defaultProcessorGroup;
  Attribute runtimes;
  std::wstring description;
  std::optional<Prebuilt> prebuilt;
  std::optional<BootImages> bootImages;
  std::vector<ProcessorGroup> processorGroups;
};

struct SystemConfigurations {
  Attribute defaultConfiguration;
  std::vector<Configuration> configurations;
};

struct Platform {
  Attribute vendor;
  Attribute library;
  Attribute name;
  Attribute version;  // decimal, kept as written without surrounding blanks
  Attribute schemaVersion;
  std::wstring description;
  SystemConfigurations systemConfigurations;
};

// The namespace of every element and attribute of the format.
extern const char* const kNamespaceUri;

// Parse and validate a document into records. Anything that is not a valid
// software platform (unreadable file, malformed XML, unknown or misplaced
// element, missing required attribute or child) raises HXMLException with the
// line number where there is one. `name` stands for the document in errors.
Platform unmarshalFile(const std::string& path);
Platform unmarshalString(const std::string& text, const std::string& name);

// Write records back as a document, attributes and children in the order of
// the format. The document is validated before it is returned; records that
// break the format raise HXMLException.
std::string marshal(const Platform& platform);

}  // namespace TEQSoftwarePlatform

#endif
