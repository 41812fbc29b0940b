#ifndef PLATFORM_SRC_LOADING_REPORTONLYLOAD_H
#define PLATFORM_SRC_LOADING_REPORTONLYLOAD_H

#include <string_view>
#include <vector>

namespace teq_platform {

// While an object of this class lives, loads on its thread leave out of the
// hardware platforms the parts of the JSON metadata that no platform report
// reads: the bus interfaces and NoC records of the document itself and its IP
// parameters. The text is still checked whole, so a load succeeds or fails
// exactly as a full one does; only a caller that reads nothing but the report
// (the catalog) may use it.
class ReportOnlyLoad {
 public:
  ReportOnlyLoad();
  ~ReportOnlyLoad();
  ReportOnlyLoad(const ReportOnlyLoad&) = delete;
  ReportOnlyLoad& operator=(const ReportOnlyLoad&) = delete;

  static bool active();
  // The root members of a hardware document that such a load leaves out.
  static const std::vector<std::string_view>& skippedMembers();

 private:
  bool previous_;
};

}  // namespace teq_platform

#endif
