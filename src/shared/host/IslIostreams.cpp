#include "host/IslIostreams.h"

#include <unistd.h>

#include <boost/iostreams/filtering_streambuf.hpp>
#include <cerrno>
#include <cstring>
#include <vector>

#include "ZrTempFile.h"
#include "ZrZipArchive.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"

namespace isl {
namespace iostreams {

namespace device {

struct file_source::Impl {
  std::unique_ptr<zr_zip::MemberReader> reader;
  std::string error;
};

file_source::file_source(const std::string& member, const std::string& archive, std::ios_base::openmode mode)
    : impl_(std::make_shared<Impl>()) {
  if (!(mode & std::ios_base::in)) {
    impl_->error = "a member source is opened for reading only";
    return;
  }
  try {
    impl_->reader.reset(new zr_zip::MemberReader(archive, member));
    if (!impl_->reader->isOpen()) {
      impl_->reader.reset();
      impl_->error = "archive '" + archive + "' has no member '" + member + "'";
    }
  } catch (const HEXAll& e) {
    impl_->reader.reset();
    impl_->error = e.getText();
  }
}

bool file_source::is_open() const { return impl_->reader && impl_->reader->isOpen(); }

const std::string& file_source::error() const { return impl_->error; }

std::streamsize file_source::read(char* s, std::streamsize n) {
  if (!is_open() || n <= 0) return -1;
  try {
    const std::size_t got = impl_->reader->read(s, static_cast<std::size_t>(n));
    return got == 0 ? -1 : static_cast<std::streamsize>(got);
  } catch (const HEXAll& e) {
    impl_->error = e.getText();
    throw;
  }
}

std::streampos file_source::seek(boost::iostreams::stream_offset offset, std::ios_base::seekdir way) {
  if (!is_open()) throw std::ios_base::failure("seek on a member that is not open");
  zr_zip::MemberReader& reader = *impl_->reader;
  boost::iostreams::stream_offset base = 0;
  if (way == std::ios_base::cur) {
    base = static_cast<boost::iostreams::stream_offset>(reader.position());
  } else if (way == std::ios_base::end) {
    if (reader.recordedSize() < 0) throw std::ios_base::failure("the member's size is unknown");
    base = reader.recordedSize();
  }
  const boost::iostreams::stream_offset target = base + offset;
  if (target < 0) throw std::ios_base::failure("seek before the start of a member");
  try {
    return boost::iostreams::offset_to_position(
        static_cast<boost::iostreams::stream_offset>(reader.seek(static_cast<std::uint64_t>(target))));
  } catch (const HEXAll& e) {
    impl_->error = e.getText();
    throw std::ios_base::failure(e.getText());
  }
}

void file_source::close() {
  if (impl_->reader) impl_->reader->close();
}

}  // namespace device

struct zip_istream::Impl {
  explicit Impl(const device::file_source& s) : source(s) {}
  device::file_source source;
  boost::iostreams::filtering_streambuf<boost::iostreams::input> buffer;
};

zip_istream::zip_istream(const std::string& member, const std::string& archive, std::ios_base::openmode mode,
                         int filter)
    : std::istream(nullptr), impl_(new Impl(device::file_source(member, archive, mode))) {
  open_ = impl_->source.is_open();
  if (!open_) {
    setstate(std::ios_base::failbit);
    return;
  }
  if (filter & zip_filter_xp) impl_->buffer.push(xp_autodetect());
  impl_->buffer.push(impl_->source);
  rdbuf(&impl_->buffer);
}

zip_istream::~zip_istream() {
  // Detach the buffer before it goes with impl_.
  rdbuf(nullptr);
}

const std::string& zip_istream::error() const { return impl_->source.error(); }

zip_ostream::zip_ostream(const std::string& archive, const std::string& member, Encryption encryption)
    : std::ostream(nullptr), archive_(archive), member_(member) {
  try {
    if (encryption != none) throw HEXUserException("encrypted members are not supported");
    if (archive.empty()) throw HEXUserException("no archive path was given");
    zr_zip::checkMemberName(archive, member);
    const std::string parent = HUTPathUtils::getParent(archive);
    if (!parent.empty() && !HUTFile::isDir(parent))
      throw HEXUserException("cannot write archive '" + archive + "': the directory '" + parent +
                             "' does not exist");
    // An existing file must already be a sound archive, so that the update
    // cannot turn some other file into a zip.
    if (HUTFile::exists(archive)) {
      zr_zip::Archive existing(archive, zr_zip::OpenMode::kRead);
    }
    // The member is spooled beside the archive: the same file system, and a
    // directory that cannot take the spool could not take the update either.
    zr_zip::TempFile spool(parent, ".zr-member-", archive);
    spool_ = spool.release();
    if (!buffer_.open(spool_, std::ios_base::out | std::ios_base::binary | std::ios_base::trunc))
      throw HEXUserException("cannot write archive '" + archive + "': cannot open the temporary file '" +
                             spool_ + "'");
  } catch (const HEXAll& e) {
    if (!spool_.empty()) ::unlink(spool_.c_str());
    spool_.clear();
    error_ = e.getText();
    setstate(std::ios_base::failbit);
    return;
  }
  open_ = true;
  rdbuf(&buffer_);
}

zip_ostream::~zip_ostream() {
  if (open_) {
    try {
      close();
    } catch (const HEXAll& e) {
      ZR_SEND_MSG("@1-1880@%s%s%s", ComMsgMask::kError, member_, archive_, e.getText());
    }
  }
  if (!spool_.empty()) ::unlink(spool_.c_str());
}

void zip_ostream::close() {
  if (!open_) return;
  open_ = false;
  flush();
  const bool written = !fail() && buffer_.close() != nullptr;
  rdbuf(nullptr);
  struct SpoolRemover {
    std::string& path;
    ~SpoolRemover() {
      ::unlink(path.c_str());
      path.clear();
    }
  } remover{spool_};
  if (!written)
    throw HEXUserException("cannot write the member '" + member_ + "' of archive '" + archive_ +
                           "': writing it failed, so the archive was left as it was");
  zr_zip::Archive archive(archive_, zr_zip::OpenMode::kUpdate);
  archive.putFile(member_, spool_);
  archive.commit();
}

namespace zip {

bool is_file(const std::string& archive, const std::string& member) {
  return HUTZip::containsFile(archive, member);
}

}  // namespace zip

std::string read_metadata(std::istream& in, const std::string& name) {
  const unsigned long long limit = HUTEnv::instance().getMaxMetadataSize();
  std::string content;
  // The buffer lives on the heap: a host may call in on a thread with a small stack.
  std::vector<char> buffer(64 * 1024);
  while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) || in.gcount() > 0) {
    content.append(buffer.data(), static_cast<std::size_t>(in.gcount()));
    if (content.size() > limit)
      throw HEXDataException(name + ": beyond the metadata size limit of " + std::to_string(limit) +
                             " bytes");
    if (!in) break;
  }
  return content;
}

}  // namespace iostreams
}  // namespace isl
