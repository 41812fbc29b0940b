#ifndef HOST_JUNTCLTASKS_H
#define HOST_JUNTCLTASKS_H

#include <string>

#include "platform/ZrPlatformExport.h"

namespace jun {
namespace tcltasks {

// Evaluates Tcl commands in the hosting tool's interpreter. A host tool with
// an interpreter of its own installs its manager with setInstance; the
// default embeds one Tcl 8.6 interpreter, made at the first evaluation and
// kept for the life of the process, so that what one evaluation defines the
// next one sees.
//
// The default interpreter never ends the process:
//   - `exit` unwinds the whole evaluation, past every `catch` of the script,
//     and eval_in_tcl raises HEXUserException naming the exit status and the
//     last lines the script wrote to standard output; every interpreter the
//     script makes, at any depth, safe or not, has this `exit` and no other;
//   - each evaluation may run for getTimeLimit() milliseconds; a script that
//     runs longer (a loop on `after`, a `vwait` that never ends) is stopped
//     and eval_in_tcl raises HEXUserException;
//   - `puts` to standard output goes through std::cout, where a host (or the
//     command-line tool) can redirect it.
// The interpreter stays usable after any of these. It belongs to the thread
// that made it: an evaluation from another thread raises HEXUserException.
class ZR_PLATFORM_API task_manager {
 public:
  task_manager();
  virtual ~task_manager();
  task_manager(const task_manager&) = delete;
  task_manager& operator=(const task_manager&) = delete;

  // Evaluates `command` at global level and returns its result. `record`
  // asks a host that keeps a journal of commands to keep this one (the
  // default keeps none). A Tcl error raises HEXUserException with the error
  // information when `raiseOnError` is true, and is returned as the result
  // otherwise; `exit` and the time limit always raise.
  virtual std::string eval_in_tcl(const std::string& command, bool record, bool raiseOnError) = 0;

  // The process-wide manager. setInstance does not take ownership; null
  // restores the default.
  static task_manager& instance();
  static void setInstance(task_manager* manager);

  // The time one evaluation of the default interpreter may take, in
  // milliseconds; 0 lifts the limit. The default is one hour.
  static unsigned long getTimeLimit();
  static void setTimeLimit(unsigned long milliseconds);
};

}  // namespace tcltasks
}  // namespace jun

#endif
