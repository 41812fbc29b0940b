#include "emulation/HTEQEmulationCfaMember.h"

#include <boost/iostreams/filtering_stream.hpp>
#include <ios>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/IslIostreams.h"

namespace {

const char kMemberNotOpened[] = "@74-34@%s%s";

// The characters that "." does not match in ECMAScript syntax.
bool isLineTerminator(char c) { return c == '\n' || c == '\r'; }

}  // namespace

std::string HTEQEmulationCfaMember::reduceMemberName(const std::string& member) {
  if (member.size() < 2 || isLineTerminator(member[0]) || member[1] != '/') return member;
  std::size_t rest = 1;
  while (rest < member.size() && member[rest] == '/') ++rest;
  // "(.*)$" must reach the end without crossing a line break.
  for (std::size_t i = rest; i < member.size(); ++i)
    if (isLineTerminator(member[i])) return member;
  return member.substr(rest);
}

std::string HTEQEmulationCfaMember::read(const std::string& archive, const std::string& member) {
  const std::string name = reduceMemberName(member);
  isl::iostreams::device::file_source source(name, archive, std::ios_base::in | std::ios_base::binary);
  if (!source.is_open()) {
    ComMsg msg;
    msg.id = kMemberNotOpened;
    msg.args = {archive, name};
    throw HEXError(ComMsgMgr::formatText(msg) + " (" + source.error() + ")");
  }
  boost::iostreams::filtering_istream in;
  in.push(source);
  // A failure of the member source (damaged data, a member beyond the size
  // limit) is rethrown as it was raised instead of ending the read quietly.
  in.exceptions(std::ios_base::badbit);
  return isl::iostreams::read_metadata(in, name);
}
