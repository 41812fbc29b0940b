#ifndef PLATFORM_SRC_ARCHIVEMEMBERCACHE_H
#define PLATFORM_SRC_ARCHIVEMEMBERCACHE_H

#include <exception>
#include <map>
#include <memory>
#include <string>
#include <tuple>

// What the readers of one load made from archive members: each member is read
// and parsed once however many file entries, partitions or readers name it.
// A value is kept under a kind (what was made of the member, such as
// "EMU_XML"), the archive path and the member name; one kind always holds one
// type. A make that throws is remembered too: a later ask throws the same
// exception again without reading the member.
//
// The cache lives as long as the load that owns it and holds at most one value
// per member named in that load.
class ArchiveMemberCache {
 public:
  ArchiveMemberCache() = default;
  ArchiveMemberCache(const ArchiveMemberCache&) = delete;
  ArchiveMemberCache& operator=(const ArchiveMemberCache&) = delete;

  // The value of kind `kind` for the member, from make() on the first ask.
  template <class T, class Make>
  std::shared_ptr<const T> get(const char* kind, const std::string& archive, const std::string& member,
                               Make make) {
    Entry& entry = entries_[Key(kind, archive, member)];
    if (!entry.made) {
      entry.made = true;
      ++makes_;
      try {
        entry.value = std::shared_ptr<const T>(make());
      } catch (...) {
        entry.error = std::current_exception();
      }
    }
    if (entry.error) std::rethrow_exception(entry.error);
    return std::static_pointer_cast<const T>(entry.value);
  }

  // How many values were made so far, failed ones included.
  std::size_t makes() const { return makes_; }

 private:
  using Key = std::tuple<std::string, std::string, std::string>;
  struct Entry {
    bool made = false;
    std::shared_ptr<const void> value;
    std::exception_ptr error;
  };

  std::map<Key, Entry> entries_;
  std::size_t makes_ = 0;
};

#endif
