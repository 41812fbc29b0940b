#include "host/HUTZip.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <boost/filesystem.hpp>
#include <cerrno>
#include <cstring>
#include <memory>
#include <mutex>

#include "ZrFileAccess.h"
#include "ZrTempFile.h"
#include "ZrZipArchive.h"
#include "ZrZipDigest.h"
#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"

namespace fs = boost::filesystem;
using zr_zip::Archive;
using zr_zip::MemberReader;
using zr_zip::OpenMode;

namespace {

std::uint64_t gMaxMemberSize = 2ull << 30;

// The plain members of the archives looked into last. Loading one platform
// asks about the same archive more than once (its JSON members, then its
// emulation members); a listing is answered again while the file is the same
// one, unchanged: same device, inode, size, modification and change times.
//
// The archive a listing opened last is kept open for the member read that
// usually follows, under the same condition, so that a load opens and checks
// each archive once. At most one archive is held per thread: the read takes
// it, and the next listing on that thread that opens an archive closes it.
class ListingCache {
 public:
  bool lookup(const std::string& path, const struct stat& st, std::vector<std::string>& names) {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const Entry& e : entries_)
      if (e.path == path && same(e.st, st)) {
        names = e.names;
        return true;
      }
    return false;
  }
  void store(const std::string& path, const struct stat& st, std::vector<std::string> names) {
    std::lock_guard<std::mutex> lock(mutex_);
    entries_.erase(
        std::remove_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.path == path; }),
        entries_.end());
    if (entries_.size() == kEntries) entries_.erase(entries_.begin());
    entries_.push_back(Entry{path, st, std::move(names)});
  }
  void hold(const std::string& path, const struct stat& st, std::unique_ptr<Archive> archive) {
    Held& held = heldHere();
    const std::unique_ptr<Archive> previous = std::move(held.archive);
    held.archive = std::move(archive);
    held.path = path;
    held.st = st;
  }
  // The held archive when it is the file at the path, unchanged; else null.
  std::unique_ptr<Archive> take(const std::string& path, const struct stat& st) {
    Held& held = heldHere();
    if (!held.archive || held.path != path || !same(held.st, st)) return nullptr;
    return std::move(held.archive);
  }

 private:
  static constexpr std::size_t kEntries = 8;
  struct Entry {
    std::string path;
    struct stat st;
    std::vector<std::string> names;  // plain members, sorted
  };
  static bool same(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
           a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
  }
  // The archive held for a thread: the read that follows a listing comes
  // from the same load, on the same thread, while other threads load others.
  struct Held {
    std::unique_ptr<Archive> archive;
    std::string path;
    struct stat st {};
  };
  static Held& heldHere() {
    thread_local Held held;
    return held;
  }
  std::mutex mutex_;
  std::vector<Entry> entries_;
};

ListingCache& listingCache() {
  static ListingCache cache;
  return cache;
}

// The permission bits the archive records for a member made on a Unix
// system, or 0 when it records none.
mode_t recordedMode(Archive& archive, std::int64_t index) {
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(archive.handle(), static_cast<zip_uint64_t>(index), 0, &system,
                                       &attributes) != 0 ||
      system != ZIP_OPSYS_UNIX)
    return 0;
  return static_cast<mode_t>((attributes >> 16) & 0777);
}

bool isInside(const std::string& path, const std::string& root) {
  return path == root || (path.size() > root.size() && path.compare(0, root.size(), root) == 0 &&
                          (root.back() == '/' || path[root.size()] == '/'));
}

// Streams one member into the file `target` through a temporary file in the
// same directory, so that a failed or refused read leaves no partial file.
// A device, a FIFO, a socket, a directory or a symbolic link is never
// replaced: only a regular file or nothing.
void requireReplaceable(const std::string& target) {
  if (!HUTFile::isReplaceable(target))
    throw HEXUserException("cannot write '" + target + "': it is not a regular file");
}

void writeMemberFile(Archive& archive, std::int64_t index, const std::string& target) {
  requireReplaceable(target);
  MemberReader reader(archive, index);
  if (!reader.isOpen()) return;
  zr_zip::TempFile file(zr_zip::directoryOf(target), ".zr-extract-", target);
  char buffer[65536];
  for (std::size_t got; (got = reader.read(buffer, sizeof buffer)) > 0;) file.write(buffer, got);
  const mode_t recorded = recordedMode(archive, index);
  // Asked again just before the rename: the target may have changed meanwhile.
  requireReplaceable(target);
  file.commitTo(target, zr_zip::newFileMode(recorded ? (recorded | 0600) : 0666));
}

// Unpacks one entry below the canonical directory `root`. The name has been
// checked; its directories are made one by one without following a link, so
// that a symbolic link already lying in the destination cannot lead outside it.
void unpackEntry(Archive& archive, std::int64_t index, const std::string& root, bool overwrite) {
  std::string name = archive.name(index);
  const bool isDir = !name.empty() && name.back() == '/';
  while (!name.empty() && name.back() == '/') name.pop_back();
  const std::string target = root + "/" + name;
  const auto slash = name.rfind('/');
  const std::string dirs =
      isDir ? name : (slash == std::string::npos ? std::string() : name.substr(0, slash));
  if (!HUTFile::mkDirBelow(root, dirs))
    throw HEXDataException("archive '" + archive.path() + "': the member '" + archive.name(index) +
                           "' would be written outside '" + root +
                           "' (a directory on its way is a link or no directory)");
  if (isDir) return;

  struct stat st;
  if (::lstat(target.c_str(), &st) == 0) {
    if (!overwrite) return;
    if (S_ISDIR(st.st_mode))
      throw HEXUserException("cannot unpack '" + archive.name(index) + "': '" + target + "' is a directory");
  }
  writeMemberFile(archive, index, target);
}

std::string canonicalDestination(const std::string& destDir) {
  if (destDir.empty()) throw HEXUserException("no destination directory was given");
  HUTFile::mkDirRecursive(destDir);
  return HUTFile::getCanonicalName(destDir);
}

void requireExisting(const std::string& zipFile) {
  if (!HUTFile::exists(zipFile)) throw HEXFileNotFoundException(zipFile);
}

}  // namespace

bool HUTZip::containsFile(const std::string& zipFile, const std::string& member) {
  return containsFiles(zipFile, {member}).front();
}

std::vector<bool> HUTZip::containsFiles(const std::string& zipFile, const std::vector<std::string>& members) {
  std::vector<bool> found(members.size(), false);
  std::vector<std::string> plain;
  struct stat st;
  const bool known = zr_file::statPath(zipFile, st) && S_ISREG(st.st_mode);
  if (!known || !listingCache().lookup(zipFile, st, plain)) {
    std::unique_ptr<Archive> archive;
    try {
      archive = std::make_unique<Archive>(zipFile, OpenMode::kRead);
      for (std::int64_t i = 0, n = archive->size(); i < n; ++i)
        if (!archive->isDirectoryEntry(i)) plain.push_back(archive->name(i));
    } catch (const HEXAll&) {
      return found;
    }
    std::sort(plain.begin(), plain.end());
    if (known) {
      listingCache().store(zipFile, st, plain);
      listingCache().hold(zipFile, st, std::move(archive));
    }
  }
  for (std::size_t i = 0; i < members.size(); ++i)
    found[i] = !members[i].empty() && members[i].find('\0') == std::string::npos &&
               std::binary_search(plain.begin(), plain.end(), members[i]);
  return found;
}

std::vector<std::string> HUTZip::getFiles(const std::string& zipFile) {
  return Archive(zipFile, OpenMode::kRead).names();
}

void HUTZip::compress(const std::string& zipFile, const std::string& file, const std::string& baseDir,
                      unsigned options) {
  if (!HUTFile::isFile(file))
    throw HEXUserException("cannot add '" + file + "' to an archive: it is no file");
  std::string member = HUTPathUtils::getFileName(file);
  if (options & ZO_RELATIVE) {
    const std::string base = HUTFile::getCanonicalName(baseDir);
    const std::string path = HUTFile::getCanonicalName(file);
    if (baseDir.empty() || !isInside(path, base) || path == base)
      throw HEXUserException("cannot add '" + file + "' to archive '" + zipFile +
                             "': it does not lie below '" + baseDir + "'");
    member = path.substr(base.size() + (base.back() == '/' ? 0 : 1));
  }
  Archive archive(zipFile, (options & ZO_CREATE) ? OpenMode::kCreate : OpenMode::kUpdate);
  archive.putFile(member, file);
  archive.commit();
}

void HUTZip::compressDir(const std::string& zipFile, const std::string& dir, bool withDirName,
                         unsigned options) {
  if (!HUTFile::isDir(dir))
    throw HEXUserException("cannot add '" + dir + "' to an archive: it is no directory");
  const fs::path root(HUTFile::getCanonicalName(dir));
  const std::string self = HUTFile::getCanonicalName(zipFile);
  const std::string prefix = withDirName ? root.filename().string() + "/" : std::string();

  std::vector<std::pair<std::string, std::string>> files;  // member name, file
  boost::system::error_code ec;
  for (fs::recursive_directory_iterator it(root, ec), end; !ec && it != end; it.increment(ec)) {
    boost::system::error_code statusError;
    if (!fs::is_regular_file(it->path(), statusError)) continue;
    if (it->path().string() == self) continue;  // never pack the archive into itself
    files.emplace_back(prefix + it->path().lexically_relative(root).generic_string(), it->path().string());
  }
  if (ec) throw HEXUserException("cannot list the directory '" + dir + "': " + ec.message());
  std::sort(files.begin(), files.end());

  Archive archive(zipFile, (options & ZO_CREATE) ? OpenMode::kCreate : OpenMode::kUpdate);
  for (const auto& entry : files) archive.putFile(entry.first, entry.second);
  archive.commit();
}

bool HUTZip::uncompress(const std::string& zipFile, const std::string& member, const std::string& destDir,
                        bool overwrite) {
  Archive archive(zipFile, OpenMode::kRead);
  const std::int64_t index = archive.locate(member);
  if (index < 0) return false;
  zr_zip::checkMemberName(zipFile, member);
  unpackEntry(archive, index, canonicalDestination(destDir), overwrite);
  return true;
}

bool HUTZip::uncompressDir(const std::string& zipFile, const std::string& dirInZip,
                           const std::string& destDir, bool overwrite) {
  Archive archive(zipFile, OpenMode::kRead);
  std::string prefix = dirInZip;
  while (!prefix.empty() && prefix.back() == '/') prefix.pop_back();

  std::vector<std::int64_t> selected;
  const std::int64_t n = archive.size();
  for (std::int64_t i = 0; i < n; ++i) {
    const std::string name = archive.name(i);
    if (prefix.empty() || name == prefix || name.compare(0, prefix.size() + 1, prefix + "/") == 0) {
      zr_zip::checkMemberName(zipFile, name);
      selected.push_back(i);
    }
  }
  if (selected.empty()) return false;
  const std::string root = canonicalDestination(destDir);
  for (std::int64_t index : selected) unpackEntry(archive, index, root, overwrite);
  return true;
}

bool HUTZip::extractMember(const std::string& zipFile, const std::string& member,
                           const std::string& destFile) {
  if (!HUTFile::exists(zipFile) || destFile.empty()) return false;
  Archive archive(zipFile, OpenMode::kRead);
  const std::int64_t index = archive.locate(member);
  if (index < 0 || archive.isDirectoryEntry(index)) return false;
  // A failure to write is reported as such (HEXUserException), not as a missing member.
  const std::string parent = HUTPathUtils::getParent(destFile);
  if (!parent.empty()) HUTFile::mkDirRecursive(parent);
  writeMemberFile(archive, index, destFile);
  return true;
}

bool HUTZip::extractNestedMember(const std::string& zipFile, const std::string& innerArchive,
                                 const std::string& pathInside, const std::string& destFile) {
  if (!containsFile(zipFile, innerArchive)) return false;
  const std::string tmpDir = HUTEnv::instance().getJUNTmpDir();
  HUTFile::mkDirRecursive(tmpDir);
  zr_zip::TempFile inner(tmpDir, "zr-nested-", zipFile);
  inner.close();
  return extractMember(zipFile, innerArchive, inner.path()) &&
         extractMember(inner.path(), pathInside, destFile);
}

bool HUTZip::readMember(const std::string& zipFile, const std::string& member, std::string& content) {
  content.clear();
  struct stat st;
  if (!zr_file::statPath(zipFile, st)) return false;
  std::unique_ptr<Archive> archive = listingCache().take(zipFile, st);
  if (!archive) archive = std::make_unique<Archive>(zipFile, OpenMode::kRead);
  const std::int64_t index = archive->locate(member);
  if (index < 0 || archive->isDirectoryEntry(index)) return false;
  content = archive->read(index);
  return true;
}

void HUTZip::writeMember(const std::string& zipFile, const std::string& member, const std::string& content) {
  Archive archive(zipFile, OpenMode::kUpdate);
  archive.put(member, content);
  archive.commit();
}

void HUTZip::addFile(const std::string& zipFile, const std::string& member, const std::string& sourceFile) {
  Archive archive(zipFile, OpenMode::kUpdate);
  archive.putFile(member, sourceFile);
  archive.commit();
}

int HUTZip::deleteFilesFromZip(const std::string& zipFile, const std::vector<std::string>& members) {
  requireExisting(zipFile);
  Archive archive(zipFile, OpenMode::kUpdate);
  int deleted = 0;
  for (const std::string& member : members) {
    const std::int64_t index = archive.locate(member);
    if (index < 0) continue;
    archive.remove(index);
    ++deleted;
  }
  if (deleted > 0) archive.commit();
  return deleted;
}

void HUTZip::updateFiles(const std::string& zipFile,
                         const std::vector<std::pair<std::string, std::string>>& files, bool attachDigest) {
  requireExisting(zipFile);
  // The file behind a link is the one replaced, so that the link stays.
  const std::string target = HUTFile::getCanonicalName(zipFile);
  struct stat st;
  if (::stat(target.c_str(), &st) != 0 || !S_ISREG(st.st_mode))
    throw HEXUserException("cannot update '" + zipFile + "': it is not a regular file");
  for (const auto& entry : files) zr_zip::checkMemberName(zipFile, entry.first);

  zr_zip::TempFile copy(zr_zip::directoryOf(target), ".zr-update-", target);
  {
    zr_owned::Fd in(HUTFile::openForReading(target));
    char buffer[65536];
    for (;;) {
      const ssize_t got = ::read(in.get(), buffer, sizeof buffer);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) throw HEXUserException("cannot read '" + zipFile + "': " + std::strerror(errno));
      if (got == 0) break;
      copy.write(buffer, static_cast<std::size_t>(got));
    }
  }
  copy.close();
  {
    Archive archive(copy.path(), OpenMode::kUpdate);
    for (const auto& entry : files) archive.putFile(entry.first, entry.second);
    archive.commit();
  }
  // The digest reads the members back, so it is taken over the written copy.
  if (attachDigest) attachDigestEn(copy.path());
  // The copy was closed above: the mode is set by path, then the copy is renamed into place.
  if (::chmod(copy.path().c_str(), st.st_mode & 07777) != 0)
    throw HEXUserException("cannot update '" + zipFile + "': " + std::strerror(errno));
  copy.commitTo(target, st.st_mode & 07777);
}

void HUTZip::attachDigestEn(const std::string& zipFile) {
  requireExisting(zipFile);
  Archive archive(zipFile, OpenMode::kUpdate);
  archive.setComment(zr_zip::digestComment(zr_zip::computeDigest(archive)));
  archive.commit();
}

HUTZip::DigestState HUTZip::verifyDigest(const std::string& zipFile) {
  if (!HUTFile::exists(zipFile)) return DIGEST_NONE;
  Archive archive(zipFile, OpenMode::kRead);
  std::string stamped;
  if (!zr_zip::parseDigestComment(archive.comment(), stamped)) return DIGEST_NONE;
  std::string actual;
  try {
    actual = zr_zip::computeDigest(archive);
  } catch (const HEXDataException&) {
    // A member that no longer reads back is a changed member.
    return DIGEST_MISMATCH;
  }
  return actual == stamped ? DIGEST_VALID : DIGEST_MISMATCH;
}

std::uint64_t HUTZip::getMaxMemberSize() { return gMaxMemberSize; }

void HUTZip::setMaxMemberSize(std::uint64_t bytes) { gMaxMemberSize = bytes; }
