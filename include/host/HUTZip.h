#ifndef HOST_HUTZIP_H
#define HOST_HUTZIP_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/ZrPlatformExport.h"

// Whole-archive operations on zip files given by path: listing, packing files
// and directories in, unpacking members and directories out, deleting members,
// and the digest stamped into a finished archive.
//
// Every change is written to a temporary file beside the archive and renamed
// over it, so a failed change leaves the original archive as it was.
//
// Failures: queries (containsFile, verifyDigest on a missing file) answer
// false or an empty result. Otherwise an archive that is no zip file, is
// damaged, names a member twice, or holds a member that would unpack outside
// the destination or beyond getMaxMemberSize() raises HEXDataException; a
// missing archive HEXFileNotFoundException; a file that cannot be read or
// written HEXUserException. Each text names the archive and the reason.
class ZR_PLATFORM_API HUTZip {
 public:
  // Bits of the options of compress and compressDir.
  enum ZIP_OPTIONS : unsigned {
    ZO_CREATE = 2,     // start a new archive, replacing any file at the path
    ZO_APPEND = 4,     // add to the archive, made when missing; replaces a member of the same name
    ZO_RELATIVE = 32,  // member names are paths relative to the base directory, else the file name
  };
  // The usual pairs: the first file of a new archive, then each further one.
  static constexpr unsigned ZO_CREATE_RELATIVE = ZO_CREATE | ZO_RELATIVE;  // 34
  static constexpr unsigned ZO_APPEND_RELATIVE = ZO_APPEND | ZO_RELATIVE;  // 36

  // Outcome of verifyDigest.
  enum DigestState {
    DIGEST_NONE,      // the archive carries no digest, or the file is missing
    DIGEST_VALID,     // the digest matches the members
    DIGEST_MISMATCH,  // a member was added, removed or changed since the stamp
  };

  // True when the archive has a member of exactly this name that is not a
  // directory entry. False for a missing, unreadable or damaged archive.
  static bool containsFile(const std::string& zipFile, const std::string& member);
  // containsFile for several names, opening the archive once.
  static std::vector<bool> containsFiles(const std::string& zipFile, const std::vector<std::string>& members);

  // The member names in archive order, directory entries (ending in "/") included.
  static std::vector<std::string> getFiles(const std::string& zipFile);

  // Adds one file. With ZO_RELATIVE the member name is the file's path
  // relative to baseDir (the file must lie below it), else its file name.
  // ZO_CREATE starts a new archive; otherwise the file is added to the
  // archive, replacing a member of the same name.
  static void compress(const std::string& zipFile, const std::string& file, const std::string& baseDir,
                       unsigned options);

  // Adds every file below dir in one update. Member names are the paths
  // relative to dir, behind the directory's own name when withDirName is true
  // ("overlay/emu/emu.xml"). Symbolic links to directories are not followed.
  // ZO_CREATE in options starts a new archive.
  static void compressDir(const std::string& zipFile, const std::string& dir, bool withDirName = true,
                          unsigned options = ZO_APPEND);

  // Copies one member to destDir/member, making directories as needed.
  // Returns false when the member does not exist. An existing file is
  // replaced only with overwrite (else kept, and the result is true).
  static bool uncompress(const std::string& zipFile, const std::string& member, const std::string& destDir,
                         bool overwrite);

  // Copies every member below the archive directory dirInZip (all members
  // when it is empty) to destDir, keeping the layout: "bd/x.tcl" goes to
  // destDir/bd/x.tcl. Returns false when no member lies below dirInZip.
  // Every member name is checked before anything is written.
  static bool uncompressDir(const std::string& zipFile, const std::string& dirInZip,
                            const std::string& destDir, bool overwrite);

  // Copies one member to the file destFile (its directory is made). False
  // when the archive or the member is missing or the file cannot be written;
  // a damaged member still raises HEXDataException, and leaves no file.
  static bool extractMember(const std::string& zipFile, const std::string& member,
                            const std::string& destFile);

  // Copies the member pathInside of the archive stored as the member
  // innerArchive of zipFile (a project archive inside a platform archive) to
  // destFile. The inner archive is unpacked to a temporary file in the tool's
  // temporary directory, removed afterwards. False when either member is
  // missing or the file cannot be written.
  static bool extractNestedMember(const std::string& zipFile, const std::string& innerArchive,
                                  const std::string& pathInside, const std::string& destFile);

  // The whole content of one member in `content`. False when the archive or
  // the member is missing.
  static bool readMember(const std::string& zipFile, const std::string& member, std::string& content);

  // Adds or replaces one member with the given bytes, or with the bytes of a file.
  static void writeMember(const std::string& zipFile, const std::string& member, const std::string& content);
  static void addFile(const std::string& zipFile, const std::string& member, const std::string& sourceFile);

  // Deletes the named members that exist, in one update; returns how many.
  // An archive left without members stays an (empty) archive.
  static int deleteFilesFromZip(const std::string& zipFile, const std::vector<std::string>& members);

  // One update of an existing archive: each (member name, file) pair
  // replaces the member of that name or is added, and with attachDigest the
  // digest is stamped afterwards (see attachDigestEn). The archive is
  // rewritten as a copy beside it that is renamed over it at the end, so a
  // failure at any step leaves the original as it was. Throws as above.
  static void updateFiles(const std::string& zipFile,
                          const std::vector<std::pair<std::string, std::string>>& files, bool attachDigest);

  // Stamps the archive comment with a SHA-256 over the members (names and
  // contents, in name order). Throws as above when the archive cannot be read or written.
  static void attachDigestEn(const std::string& zipFile);
  static DigestState verifyDigest(const std::string& zipFile);

  // A member whose data is longer than this is refused when read or unpacked.
  // The default is 2 GiB.
  static std::uint64_t getMaxMemberSize();
  static void setMaxMemberSize(std::uint64_t bytes);
};

#endif
