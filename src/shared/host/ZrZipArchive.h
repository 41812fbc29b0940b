#ifndef HOST_ZRZIPARCHIVE_H
#define HOST_ZRZIPARCHIVE_H

// The one place that talks to libzip. HUTZip and the isl::iostreams streams
// are written over these two classes, so that every archive the library opens
// passes the same checks: a readable zip, no member name twice, no member that
// inflates past the size limit.

#include <zip.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ZrOwned.h"

namespace zr_zip {

// What to do with the file at the path when it is opened.
enum class OpenMode {
  kRead,    // must exist; nothing is written
  kUpdate,  // made when missing; changes are written by commit()
  kCreate,  // any existing file is replaced by commit()
};

// The permission bits a new file gets: requested less the process's umask.
unsigned newFileMode(unsigned requested);

// The kinds of member name the archive layer refuses.
// Empty when the name is a safe relative path: not empty, no NUL byte, no
// backslash, not absolute, no ".." component. Else a phrase saying why.
std::string unsafeNameReason(const std::string& name);

// Throws HEXDataException when unsafeNameReason(name) is not empty.
void checkMemberName(const std::string& archive, const std::string& name);

class Archive {
 public:
  // Throws HEXFileNotFoundException when a kRead archive is missing,
  // HEXDataException when the file is no zip archive or is inconsistent, and
  // HEXUserException when it cannot be opened for another reason.
  Archive(const std::string& path, OpenMode mode);
  // Drops uncommitted changes; the file on disk stays as it was.
  ~Archive();
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  const std::string& path() const { return path_; }
  zip* handle() { return za_.get(); }

  std::int64_t size() const;
  // The member names, in the order of the central directory.
  std::vector<std::string> names() const;
  // The index of a member, or -1.
  std::int64_t locate(const std::string& member) const;
  bool isDirectoryEntry(std::int64_t index) const;
  // The member's recorded (uncompressed) size, or -1 when the archive does not record it.
  std::int64_t recordedSize(std::int64_t index) const;
  // The member's stored (compressed) size, or -1 when the archive does not record it.
  std::int64_t storedSize(std::int64_t index) const;
  std::string name(std::int64_t index) const;

  // Reads a whole member into memory, which holds it to the metadata size
  // limit of the environment (and the member size limit, when that is lower).
  // Throws HEXDataException.
  std::string read(std::int64_t index);

  // Adds or replaces a member with the given bytes / with the bytes of a file
  // read at commit(). Throws HEXDataException for an unsafe name.
  void put(const std::string& member, const std::string& data);
  void putFile(const std::string& member, const std::string& sourceFile);
  void remove(std::int64_t index);
  std::string comment() const;
  void setComment(const std::string& text);

  // Writes the changes: libzip writes a temporary file beside the archive and
  // renames it over the original, so a failure leaves the original as it was.
  // Throws HEXUserException on failure. The object is closed afterwards either way.
  void commit();

 private:
  [[noreturn]] void fail(const std::string& what) const;
  void add_(const std::string& member, zr_owned::Owned<zip_source_t, zip_source_free> source);

  std::string path_;
  std::string file_;  // the file behind path_ when that is a symbolic link
  zr_owned::Owned<zip, zip_discard> za_;
};

// Reads one member in pieces, refusing to go past the size limit or past the
// member's recorded size (a member that inflates beyond what its entry says is
// damaged or hostile), and refusing a member larger than 1 MiB that inflates
// more than the environment's compression-ratio limit.
class MemberReader {
 public:
  // Throws as Archive does; returns a reader that is not open when the member
  // is missing or is a directory entry.
  MemberReader(const std::string& archive, const std::string& member);
  // Reads from an archive that is already open and outlives the reader.
  // A reader for a member read whole into memory passes the metadata size
  // limit as `metadataLimit`; 0 holds the member to the member size limit only.
  MemberReader(Archive& archive, std::int64_t index, std::uint64_t metadataLimit = 0);
  ~MemberReader();
  MemberReader(const MemberReader&) = delete;
  MemberReader& operator=(const MemberReader&) = delete;

  bool isOpen() const { return file_ != nullptr; }
  // Up to n bytes; 0 at the end. Throws HEXDataException on damaged data or
  // when the limit is passed.
  std::size_t read(char* buffer, std::size_t n);
  // Moves to an absolute offset from the start of the uncompressed data
  // (clamped to the end). Deflated data cannot seek, so this reads forward
  // and, to go back, starts over.
  std::uint64_t seek(std::uint64_t offset);
  std::uint64_t position() const { return position_; }
  std::int64_t recordedSize() const { return recordedSize_; }
  void close();

 private:
  void openFile_();
  void init_();
  void checkRecordedSize_();
  void checkRatio_(std::uint64_t inflated);
  [[noreturn]] void refuse_(const std::string& why);

  std::string archive_;
  std::string member_;

  std::unique_ptr<Archive> owned_;
  Archive* za_ = nullptr;
  zr_owned::Owned<zip_file, zip_fclose> file_;
  std::int64_t index_ = -1;
  std::int64_t recordedSize_ = -1;
  std::int64_t storedSize_ = -1;  // compressed size, -1 when unknown
  std::uint64_t limit_ = 0;
  std::string limitName_;
  std::uint64_t position_ = 0;
};

}  // namespace zr_zip

#endif
