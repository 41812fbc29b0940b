#ifndef HOST_ISLIOSTREAMS_H
#define HOST_ISLIOSTREAMS_H

// Streams on the members of zip archives.
//
//   zip_istream(member, archive, mode, filter)   reads one member
//   zip_ostream(archive, member, Encryption)     adds or replaces one member
//   device::file_source(member, archive, mode)   a boost::iostreams source on one member
//   zip::is_file(archive, member)                whether the member exists
//
// A stream that cannot be opened is not open (is_open() is false) and tells
// why through error(); the constructors do not throw. Reading stops with the
// stream's badbit when a member turns out damaged or inflates beyond its
// recorded size or the size limit (HUTZip::getMaxMemberSize).

#include <boost/iostreams/categories.hpp>
#include <boost/iostreams/positioning.hpp>
#include <fstream>
#include <ios>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

#include "host/IslXp.h"
#include "platform/ZrPlatformExport.h"

namespace isl {
namespace iostreams {

// How a written member is protected. Only `none` is supported; a stream asked
// for anything else does not open.
enum Encryption { none = 0, aes128 = 1, aes256 = 2 };

// Bits of the filter argument of zip_istream.
enum zip_filter {
  zip_filter_inflate = 1,  // members are always read inflated; the bit is accepted for compatibility
  zip_filter_xp = 2,       // a member in the packed form is unpacked (xp_autodetect)
  zip_filter_default = 3,
};

namespace device {

// A seekable boost::iostreams source on one member. Copies share one open
// member, as the chain they are pushed on keeps a copy.
class ZR_PLATFORM_API file_source {
 public:
  typedef char char_type;
  struct category : boost::iostreams::input_seekable,
                    boost::iostreams::device_tag,
                    boost::iostreams::closable_tag {};

  file_source(const std::string& member, const std::string& archive,
              std::ios_base::openmode mode = std::ios_base::in | std::ios_base::binary);
  // The mode as a number: 12 is input plus binary.
  file_source(const std::string& member, const std::string& archive, int mode)
      : file_source(member, archive, static_cast<std::ios_base::openmode>(mode)) {}

  bool is_open() const;
  // The reason the member could not be opened or read; empty otherwise.
  const std::string& error() const;
  // Up to n bytes; -1 at the end. Throws HEXDataException on damaged data.
  std::streamsize read(char* s, std::streamsize n);
  std::streampos seek(boost::iostreams::stream_offset offset, std::ios_base::seekdir way);
  void close();

 private:
  struct Impl;
  std::shared_ptr<Impl> impl_;
};

}  // namespace device

class ZR_PLATFORM_API zip_istream : public std::istream {
 public:
  zip_istream(const std::string& member, const std::string& archive,
              std::ios_base::openmode mode = std::ios_base::in | std::ios_base::binary,
              int filter = zip_filter_default);
  // The mode as a number: 12 is input plus binary.
  zip_istream(const std::string& member, const std::string& archive, int mode, int filter)
      : zip_istream(member, archive, static_cast<std::ios_base::openmode>(mode), filter) {}
  ~zip_istream() override;
  zip_istream(const zip_istream&) = delete;
  zip_istream& operator=(const zip_istream&) = delete;

  bool is_open() const { return open_; }
  const std::string& error() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
  bool open_ = false;
};

// Collects what is written in a temporary file beside the archive and puts it
// into the archive on close() (or at destruction), keeping every other
// member. The archive is made when missing. The update goes through a
// temporary file and a rename, so a failure leaves the archive as it was; a
// stream whose writing failed puts nothing into the archive.
class ZR_PLATFORM_API zip_ostream : public std::ostream {
 public:
  zip_ostream(const std::string& archive, const std::string& member, Encryption encryption = none);
  // Closes when still open; a failure there is reported as an error message,
  // since a destructor cannot throw.
  ~zip_ostream() override;
  zip_ostream(const zip_ostream&) = delete;
  zip_ostream& operator=(const zip_ostream&) = delete;

  bool is_open() const { return open_; }
  const std::string& error() const { return error_; }
  // Writes the member. Throws HEXUserException (HEXDataException for a
  // damaged archive) when the archive cannot be updated; the stream is
  // closed afterwards either way.
  void close();

 private:
  std::string archive_;
  std::string member_;
  std::string spool_;
  std::filebuf buffer_;
  std::string error_;
  bool open_ = false;
};

// What is left of `in`, read as metadata: at most the environment's metadata
// size limit (HUTEnv::getMaxMetadataSize), past which HEXDataException names
// `name` and the limit. Reading stops early, as the stream does, when `in`
// fails; the caller tells a damaged member by in.bad().
ZR_PLATFORM_API std::string read_metadata(std::istream& in, const std::string& name);

namespace zip {
// True when the archive has a member of this name (not a directory entry).
ZR_PLATFORM_API bool is_file(const std::string& archive, const std::string& member);
}  // namespace zip

}  // namespace iostreams
}  // namespace isl

#endif
