#ifndef TESTS_ARCHIVE_ZIPTESTSUPPORT_H
#define TESTS_ARCHIVE_ZIPTESTSUPPORT_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zr_test {

// Member names and contents, in archive order.
using ZipMembers = std::vector<std::pair<std::string, std::string>>;

// Writes a zip archive straight through libzip, bypassing the archive layer's
// checks, so that tests can build archives the layer itself would refuse.
// Members are deflated; a name ending in "/" makes a directory entry. Returns the path.
std::string makeZip(const std::string& path, const ZipMembers& members, const std::string& comment = "");

// The content of a member read through the archive layer; a failure to read it fails the test.
std::string memberText(const std::string& zip, const std::string& name);

// Replaces every occurrence of `from` in the file by `to` (same length);
// returns how many were replaced.
int patchBytes(const std::string& path, const std::string& from, const std::string& to);

// Sets the uncompressed size recorded for the first member, in its local
// header and in the central directory.
void patchFirstRecordedSize(const std::string& path, std::uint32_t size);

// Flips a byte inside the first member's stored data.
void damageFirstMemberData(const std::string& path);

// n bytes that deflate does not shrink.
std::string incompressible(std::size_t n);

// Sets the archive layer's size limit for the life of the object.
class ScopedMemberLimit {
 public:
  explicit ScopedMemberLimit(std::uint64_t bytes);
  ~ScopedMemberLimit();
  ScopedMemberLimit(const ScopedMemberLimit&) = delete;
  ScopedMemberLimit& operator=(const ScopedMemberLimit&) = delete;

 private:
  std::uint64_t old_;
};

// Limits the size of files this process writes, for the life of the object,
// so that a test can make a write fail; the signal that would end the process
// is ignored meanwhile.
class ScopedFileSizeLimit {
 public:
  explicit ScopedFileSizeLimit(std::uint64_t bytes);
  ~ScopedFileSizeLimit();
  ScopedFileSizeLimit(const ScopedFileSizeLimit&) = delete;
  ScopedFileSizeLimit& operator=(const ScopedFileSizeLimit&) = delete;

 private:
  struct Saved;
  Saved* saved_;
};

}  // namespace zr_test

#endif
