#include "ZrZipArchive.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <unordered_set>

#include "ZrFileAccess.h"
#include "ZrTempFile.h"
#include "ZrZipRawScan.h"
#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"

namespace zr_zip {

namespace {

std::string libzipErrorText(int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  std::string text = zip_error_strerror(&error);
  zip_error_fini(&error);
  return text;
}

// Writes an archive without members (its end record and comment) to the path,
// through a temporary file and a rename like every other update.
void writeEmptyArchive(const std::string& path, const std::string& comment) {
  std::string data("PK\x05\x06", 4);
  data.append(16, '\0');
  const std::size_t length = comment.size() > 0xffff ? 0xffff : comment.size();
  data.push_back(static_cast<char>(length & 0xff));
  data.push_back(static_cast<char>(length >> 8));
  data.append(comment, 0, length);

  TempFile file(directoryOf(path), ".zr-zip-", path);
  file.write(data.data(), data.size());
  struct stat st;
  file.commitTo(path, ::stat(path.c_str(), &st) == 0 ? (st.st_mode & 07777) : newFileMode(0666));
}

}  // namespace

unsigned newFileMode(unsigned requested) {
  const mode_t mask = ::umask(022);
  ::umask(mask);
  return requested & ~mask;
}

std::string unsafeNameReason(const std::string& name) {
  if (name.empty()) return "the name is empty";
  if (name.find('\0') != std::string::npos) return "the name holds a NUL byte";
  if (name.find('\\') != std::string::npos) return "the name holds a backslash";
  if (name.front() == '/') return "the name is an absolute path";
  const bool letter = (name[0] >= 'a' && name[0] <= 'z') || (name[0] >= 'A' && name[0] <= 'Z');
  if (letter && name.size() >= 2 && name[1] == ':' && (name.size() == 2 || name[2] == '/'))
    return "the name starts with a drive letter";
  std::size_t start = 0;
  while (start <= name.size()) {
    std::size_t end = name.find('/', start);
    if (end == std::string::npos) end = name.size();
    if (name.compare(start, end - start, "..") == 0) return "the name climbs out of its directory with '..'";
    start = end + 1;
  }
  return "";
}

void checkMemberName(const std::string& archive, const std::string& name) {
  const std::string reason = unsafeNameReason(name);
  if (!reason.empty())
    throw HEXDataException("archive '" + archive + "': the member name '" + name + "' is refused: " + reason);
}

Archive::Archive(const std::string& path, OpenMode mode) : path_(path), file_(path) {
  if (path.empty()) throw HEXUserException("no archive path was given");
  int code = 0;
  std::string nulName;
  bool nulFound = false;
  if (mode == OpenMode::kRead) {
    // One descriptor, opened and then checked, serves the raw name check and
    // the zip library. A pipe or a device would block or never end: only
    // plain files are archives.
    zr_file::OpenedFile file = zr_file::openRegular(path);
    switch (file.state) {
      case zr_file::OpenState::kOpen:
        break;
      case zr_file::OpenState::kMissing:
      case zr_file::OpenState::kUnreachable:
        throw HEXFileNotFoundException(path);
      case zr_file::OpenState::kDirectory:
        throw HEXUserException("cannot open archive '" + path + "': it is a directory");
      case zr_file::OpenState::kNotRegular:
        throw HEXUserException("cannot open archive '" + path + "': it is not a regular file");
      case zr_file::OpenState::kFailed:
        throw HEXUserException("cannot read '" + path + "': " + std::strerror(file.error));
    }
    nulFound = rawNamesHoldNul(file.fd.get(), nulName);
    za_.reset(zip_fdopen(file.fd.get(), 0, &code));
    if (za_) file.fd.release();  // the archive closes it from now on
  } else {
    // One look at the file answers every question about it.
    struct stat st;
    const bool present = ::stat(path.c_str(), &st) == 0;
    if (present && S_ISDIR(st.st_mode))
      throw HEXUserException("cannot open archive '" + path + "': it is a directory");
    if (present && !S_ISREG(st.st_mode))
      throw HEXUserException("cannot open archive '" + path + "': it is not a regular file");
    const int flags = mode == OpenMode::kUpdate ? ZIP_CREATE : ZIP_CREATE | ZIP_TRUNCATE;
    // An update through a link updates the file it points to; renaming the
    // new archive over the link itself would leave that file stale.
    struct stat link;
    if (::lstat(path.c_str(), &link) == 0 && S_ISLNK(link.st_mode)) file_ = HUTFile::getCanonicalName(path);
    za_.reset(zip_open(file_.c_str(), flags, &code));
  }
  if (!za_) {
    const std::string reason = libzipErrorText(code);
    if (code == ZIP_ER_NOZIP || code == ZIP_ER_INCONS || code == ZIP_ER_EOF || code == ZIP_ER_MULTIDISK ||
        code == ZIP_ER_SEEK || code == ZIP_ER_READ)
      throw HEXDataException("'" + path + "' is not a readable zip archive: " + reason);
    throw HEXUserException("cannot open archive '" + path + "': " + reason);
  }
  if (mode == OpenMode::kCreate) return;

  // A name twice makes every lookup ambiguous, and a name with a NUL byte
  // reads differently here than in other tools: both mark a damaged or forged archive.
  std::unordered_set<std::string> seen;
  for (const std::string& n : names()) {
    if (!seen.insert(n).second)
      throw HEXDataException("archive '" + path + "' holds the member '" + n + "' twice");
  }
  if (mode != OpenMode::kRead) nulFound = rawNamesHoldNul(file_, nulName);
  if (nulFound)
    throw HEXDataException("archive '" + path + "' holds a member name with a NUL byte: '" + nulName + "'");
}

Archive::~Archive() = default;

void Archive::fail(const std::string& what) const {
  const std::string reason = za_ ? zip_strerror(za_.get()) : "archive closed";
  throw HEXUserException("archive '" + path_ + "': " + what + ": " + reason);
}

std::int64_t Archive::size() const { return zip_get_num_entries(za_.get(), 0); }

std::vector<std::string> Archive::names() const {
  std::vector<std::string> result;
  const std::int64_t n = size();
  for (std::int64_t i = 0; i < n; ++i) {
    const char* s = zip_get_name(za_.get(), static_cast<zip_uint64_t>(i), 0);
    if (s) result.emplace_back(s);
  }
  return result;
}

std::int64_t Archive::locate(const std::string& member) const {
  if (member.empty() || member.find('\0') != std::string::npos) return -1;
  return zip_name_locate(za_.get(), member.c_str(), 0);
}

std::string Archive::name(std::int64_t index) const {
  const char* s = zip_get_name(za_.get(), static_cast<zip_uint64_t>(index), 0);
  return s ? s : "";
}

bool Archive::isDirectoryEntry(std::int64_t index) const {
  const std::string n = name(index);
  return !n.empty() && n.back() == '/';
}

std::int64_t Archive::recordedSize(std::int64_t index) const {
  zip_stat_t st;
  zip_stat_init(&st);
  if (zip_stat_index(za_.get(), static_cast<zip_uint64_t>(index), 0, &st) != 0) return -1;
  if (!(st.valid & ZIP_STAT_SIZE)) return -1;
  return static_cast<std::int64_t>(st.size);
}

std::int64_t Archive::storedSize(std::int64_t index) const {
  zip_stat_t st;
  zip_stat_init(&st);
  if (zip_stat_index(za_.get(), static_cast<zip_uint64_t>(index), 0, &st) != 0) return -1;
  if (!(st.valid & ZIP_STAT_COMP_SIZE)) return -1;
  return static_cast<std::int64_t>(st.comp_size);
}

std::string Archive::read(std::int64_t index) {
  MemberReader reader(*this, index, HUTEnv::instance().getMaxMetadataSize());
  std::string result;
  if (!reader.isOpen()) return result;
  if (reader.recordedSize() > 0) result.reserve(static_cast<std::size_t>(reader.recordedSize()));
  char buffer[65536];
  for (std::size_t got; (got = reader.read(buffer, sizeof buffer)) > 0;) result.append(buffer, got);
  return result;
}

void Archive::put(const std::string& member, const std::string& data) {
  checkMemberName(path_, member);
  zr_owned::Owned<void, ::free> copy;
  if (!data.empty()) {
    copy.reset(std::malloc(data.size()));
    if (!copy) throw HEXUserException("archive '" + path_ + "': out of memory for member '" + member + "'");
    std::memcpy(copy.get(), data.data(), data.size());
  }
  zr_owned::Owned<zip_source_t, zip_source_free> source(
      zip_source_buffer(za_.get(), copy.get(), data.size(), 1));
  if (!source) fail("cannot add member '" + member + "'");
  copy.release();  // the source frees the bytes from now on
  add_(member, std::move(source));
}

void Archive::putFile(const std::string& member, const std::string& sourceFile) {
  checkMemberName(path_, member);
  if (!HUTFile::isFile(sourceFile) || !std::ifstream(sourceFile, std::ios::binary))
    throw HEXUserException("archive '" + path_ + "': cannot read the file '" + sourceFile + "'");
  // The file source records the file's permission bits with the member.
  zr_owned::Owned<zip_source_t, zip_source_free> source(zip_source_file(za_.get(), sourceFile.c_str(), 0, 0));
  if (!source) fail("cannot add the file '" + sourceFile + "'");
  add_(member, std::move(source));
}

void Archive::add_(const std::string& member, zr_owned::Owned<zip_source_t, zip_source_free> source) {
  if (zip_file_add(za_.get(), member.c_str(), source.get(), ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8) < 0)
    fail("cannot add member '" + member + "'");
  source.release();  // the archive holds the source from now on
}

void Archive::remove(std::int64_t index) {
  if (zip_delete(za_.get(), static_cast<zip_uint64_t>(index)) != 0)
    fail("cannot delete member '" + name(index) + "'");
}

std::string Archive::comment() const {
  int length = 0;
  const char* text = zip_get_archive_comment(za_.get(), &length, ZIP_FL_ENC_RAW);
  return text && length > 0 ? std::string(text, static_cast<std::size_t>(length)) : std::string();
}

void Archive::setComment(const std::string& text) {
  if (text.size() > 0xffff) throw HEXDataException("archive '" + path_ + "': the comment is too long");
  if (zip_set_archive_comment(za_.get(), text.data(), static_cast<zip_uint16_t>(text.size())) != 0)
    fail("cannot set the comment");
}

void Archive::commit() {
  if (!za_) return;
  // libzip removes an archive left without members; keep an empty archive
  // instead, so that the path stays a readable zip file.
  std::int64_t survivors = 0;
  const std::int64_t n = size();
  for (std::int64_t i = 0; i < n; ++i) {
    zip_stat_t st;
    if (zip_stat_index(za_.get(), static_cast<zip_uint64_t>(i), 0, &st) == 0) ++survivors;
  }
  if (survivors == 0) {
    const std::string text = comment();
    za_.reset();
    writeEmptyArchive(file_, text);
    return;
  }
  if (zip_close(za_.get()) != 0) {
    const std::string reason = zip_strerror(za_.get());
    za_.reset();
    throw HEXUserException("cannot write archive '" + path_ + "': " + reason +
                           "; the archive on disk was left as it was");
  }
  za_.release();  // closed and freed by zip_close
}

MemberReader::MemberReader(const std::string& archive, const std::string& member)
    : archive_(archive), member_(member) {
  owned_.reset(new Archive(archive, OpenMode::kRead));
  za_ = owned_.get();
  index_ = za_->locate(member);
  init_();
}

MemberReader::MemberReader(Archive& archive, std::int64_t index, std::uint64_t metadataLimit)
    : archive_(archive.path()), member_(archive.name(index)), za_(&archive), index_(index) {
  init_();
  if (metadataLimit > 0 && metadataLimit < limit_) {
    limit_ = metadataLimit;
    limitName_ = "metadata size limit";
    checkRecordedSize_();
  }
}

void MemberReader::init_() {
  if (index_ < 0 || za_->isDirectoryEntry(index_)) {
    index_ = -1;
    return;
  }
  recordedSize_ = za_->recordedSize(index_);
  storedSize_ = za_->storedSize(index_);
  limit_ = HUTZip::getMaxMemberSize();
  limitName_ = "member size limit";
  checkRecordedSize_();
  if (recordedSize_ > 0) checkRatio_(static_cast<std::uint64_t>(recordedSize_));
  openFile_();
}

void MemberReader::checkRecordedSize_() {
  if (recordedSize_ > 0 && static_cast<std::uint64_t>(recordedSize_) > limit_)
    refuse_("is " + std::to_string(recordedSize_) + " bytes, beyond the " + limitName_ + " of " +
            std::to_string(limit_) + " bytes");
}

// A member past a small size that inflates far more than real data does is
// refused: its stored bytes are a tiny fraction of what it would cost.
void MemberReader::checkRatio_(std::uint64_t inflated) {
  constexpr std::uint64_t kRatioFloor = 1u << 20;
  const unsigned ratio = HUTEnv::instance().getMaxCompressionRatio();
  if (ratio == 0 || inflated <= kRatioFloor || storedSize_ < 0) return;
  if (inflated / ratio > static_cast<std::uint64_t>(storedSize_))
    refuse_("inflates from " + std::to_string(storedSize_) + " to " + std::to_string(inflated) +
            " bytes, beyond the compression-ratio limit of " + std::to_string(ratio) + " to 1");
}

void MemberReader::refuse_(const std::string& why) {
  close();
  throw HEXDataException("member '" + member_ + "' of archive '" + archive_ + "' " + why);
}

MemberReader::~MemberReader() = default;

void MemberReader::openFile_() {
  file_.reset(zip_fopen_index(za_->handle(), static_cast<zip_uint64_t>(index_), 0));
  if (!file_)
    throw HEXDataException("cannot read member '" + member_ + "' of archive '" + archive_ +
                           "': " + zip_strerror(za_->handle()));
  position_ = 0;
}

std::size_t MemberReader::read(char* buffer, std::size_t n) {
  if (!file_ || n == 0) return 0;
  const zip_int64_t got = zip_fread(file_.get(), buffer, n);
  if (got < 0) {
    const std::string reason = zip_file_strerror(file_.get());
    close();
    throw HEXDataException("cannot read member '" + member_ + "' of archive '" + archive_ + "': " + reason);
  }
  position_ += static_cast<std::uint64_t>(got);
  // The recorded size was held against the limits when the member was opened;
  // without one, the limits themselves bound the read.
  if (position_ > limit_)
    refuse_("inflates beyond the " + limitName_ + " of " + std::to_string(limit_) + " bytes");
  if (recordedSize_ >= 0 && position_ > static_cast<std::uint64_t>(recordedSize_))
    refuse_("inflates beyond its recorded size of " + std::to_string(recordedSize_) + " bytes");
  checkRatio_(position_);
  return static_cast<std::size_t>(got);
}

std::uint64_t MemberReader::seek(std::uint64_t offset) {
  if (!za_ || index_ < 0) return 0;
  if (offset < position_ || !file_) {
    file_.reset();
    openFile_();
  }
  char scratch[65536];
  while (position_ < offset) {
    const std::uint64_t want = offset - position_;
    const std::size_t got =
        read(scratch, want < sizeof scratch ? static_cast<std::size_t>(want) : sizeof scratch);
    if (got == 0) break;
  }
  return position_;
}

void MemberReader::close() { file_.reset(); }

}  // namespace zr_zip
