#ifndef PLATFORM_HTEQEMULATIONCFAMEMBER_H
#define PLATFORM_HTEQEMULATIONCFAMEMBER_H

#include <string>

// Reads the emulation metadata member of a hardware archive for the
// emulation readers' parseFromCfa.
class HTEQEmulationCfaMember {
 public:
  // The member name without a leading "./" (or "./" followed by more
  // slashes). It behaves as replacing "^.[/]+(.*)$" by "$1" in ECMAScript
  // syntax: any single first character followed by slashes is cut, and a name
  // with a line break after that prefix stays as it is. Written out by hand so
  // that a very long name cannot exhaust the stack of a recursive matcher.
  static std::string reduceMemberName(const std::string& member);

  // The whole content of the member named (after reduceMemberName) in the
  // archive. A member that cannot be opened raises HEXError from message
  // "@74-34@%s%s" with the archive and the member; damaged data or a member
  // beyond the archive layer's size limit raises HEXDataException.
  static std::string read(const std::string& archive, const std::string& member);
};

#endif
