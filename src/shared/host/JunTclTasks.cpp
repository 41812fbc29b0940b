#include "host/JunTclTasks.h"

#include <tcl.h>

#include <atomic>
#include <deque>
#include <iostream>
#include <memory>
#include <thread>

#include "host/HEXAll.h"

namespace jun {
namespace tcltasks {

namespace {

std::atomic<unsigned long> gTimeLimitMs{3600ul * 1000ul};
task_manager* gInstalled = nullptr;

struct InterpDeleter {
  void operator()(Tcl_Interp* interp) const { Tcl_DeleteInterp(interp); }
};

// How much of what a script writes to standard output is kept for the text
// of an exception: the last lines, each cut to a bounded length.
constexpr std::size_t kKeptLines = 8;
constexpr std::size_t kKeptLineLength = 1024;

// Standard output of the interpreter goes through std::cout, and a `puts` to
// another channel goes to Tcl's own command, renamed.
constexpr const char* kSetUp = R"(
namespace eval ::zr_tcltasks {}
proc ::zr_tcltasks::ignore_background_error {args} {}
interp bgerror {} ::zr_tcltasks::ignore_background_error
rename ::puts ::zr_tcltasks::tcl_puts
proc ::puts {args} {
  if {[llength $args] == 1} {
    ::zr_tcltasks::stdout_write 1 [lindex $args 0]
    return
  }
  set plain [expr {[lindex $args 0] ne "-nonewline"}]
  set rest [expr {$plain ? $args : [lrange $args 1 end]}]
  if {[llength $rest] == 1 || ([llength $rest] == 2 && [lindex $rest 0] eq "stdout")} {
    ::zr_tcltasks::stdout_write $plain [lindex $rest end]
    return
  }
  tailcall ::zr_tcltasks::tcl_puts {*}$args
}
)";

// The subcommands of Tcl's `interp`, to resolve an abbreviation as Tcl does.
const char* const kInterpSubcommands[] = {
    "alias",       "aliases",        "bgerror", "cancel", "children", "create",   "debug",        "delete",
    "eval",        "exists",         "expose",  "hide",   "hidden",   "issafe",   "invokehidden", "limit",
    "marktrusted", "recursionlimit", "slaves",  "share",  "target",   "transfer", nullptr};

// Drops what an evaluation left behind that could run later: timers and idle
// callbacks of `after`.
constexpr const char* kCleanUp = "foreach id [after info] { after cancel $id }";

class DefaultTaskManager : public task_manager {
 public:
  DefaultTaskManager() = default;
  ~DefaultTaskManager() override {
    if (interp_) {
      interp_.reset();
      // The process is ending (this object is a function-local static): give
      // Tcl's memory back, so that a leak checker sees none.
      Tcl_Finalize();
    }
  }

  std::string eval_in_tcl(const std::string& command, bool /*record*/, bool raiseOnError) override {
    if (!interp_) make_();
    if (std::this_thread::get_id() != owner_)
      throw HEXUserException("the Tcl interpreter belongs to another thread");
    Tcl_Interp* interp = interp_.get();
    exited_ = false;
    exitStatus_ = 0;
    output_.clear();

    const unsigned long limit = getTimeLimit();
    if (limit > 0) {
      Tcl_Time until;
      Tcl_GetTime(&until);
      const unsigned long long usec = static_cast<unsigned long long>(until.usec) + (limit % 1000) * 1000ull;
      until.sec += static_cast<long>(limit / 1000 + usec / 1000000);
      until.usec = static_cast<long>(usec % 1000000);
      Tcl_LimitSetTime(interp, &until);
      Tcl_LimitTypeSet(interp, TCL_LIMIT_TIME);
    }
    const int code = Tcl_EvalEx(interp, command.data(), static_cast<int>(command.size()), TCL_EVAL_GLOBAL);
    const bool overTime = limit > 0 && Tcl_LimitExceeded(interp);
    if (limit > 0) Tcl_LimitTypeReset(interp, TCL_LIMIT_TIME);

    std::string result = Tcl_GetStringResult(interp);
    std::string info;
    if (code == TCL_ERROR) {
      const char* errorInfo = Tcl_GetVar(interp, "errorInfo", TCL_GLOBAL_ONLY);
      info = errorInfo != nullptr ? errorInfo : result;
    }
    Tcl_ResetResult(interp);
    Tcl_EvalEx(interp, kCleanUp, -1, TCL_EVAL_GLOBAL);
    Tcl_ResetResult(interp);

    if (exited_)
      throw HEXUserException("the Tcl evaluation called exit with status " + std::to_string(exitStatus_) +
                             lastOutput_());
    if (overTime)
      throw HEXUserException("the Tcl evaluation was stopped after the time limit of " +
                             std::to_string(limit) + " ms" + lastOutput_());
    if (code == TCL_ERROR && raiseOnError) throw HEXUserException("the Tcl evaluation failed: " + info);
    return code == TCL_ERROR ? info : result;
  }

 private:
  void make_() {
    Tcl_FindExecutable(nullptr);
    std::unique_ptr<Tcl_Interp, InterpDeleter> interp(Tcl_CreateInterp());
    if (!interp) throw HEXUserException("cannot make a Tcl interpreter");
    // The script library (init.tcl) adds `unknown` and auto-loading; the
    // built-in commands work without it, so a missing library is no failure.
    if (Tcl_Init(interp.get()) != TCL_OK) Tcl_ResetResult(interp.get());
    Tcl_CreateObjCommand(interp.get(), "::zr_tcltasks::stdout_write", stdoutWrite_, this, nullptr);
    if (Tcl_EvalEx(interp.get(), kSetUp, -1, TCL_EVAL_GLOBAL) != TCL_OK)
      throw HEXUserException(std::string("cannot set up the Tcl interpreter: ") +
                             Tcl_GetStringResult(interp.get()));
    Tcl_CreateObjCommand(interp.get(), "exit", exit_, this, nullptr);
    Tcl_CmdInfo info;
    if (Tcl_GetCommandInfo(interp.get(), "interp", &info) == 0 || info.objProc == nullptr)
      throw HEXUserException("cannot set up the Tcl interpreter: no interp command");
    interpProc_ = info.objProc;
    interpData_ = info.objClientData;
    Tcl_CreateObjCommand(interp.get(), "interp", interpCmd_, this, nullptr);
    interp_ = std::move(interp);
    owner_ = std::this_thread::get_id();
  }

  // `exit ?status?`: unwinds the whole evaluation. A plain error could be
  // caught by the script; a cancellation with TCL_CANCEL_UNWIND cannot.
  static int exit_(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    auto* self = static_cast<DefaultTaskManager*>(data);
    int status = 0;
    if (objc > 2) {
      Tcl_WrongNumArgs(interp, 1, objv, "?returnCode?");
      return TCL_ERROR;
    }
    if (objc == 2 && Tcl_GetIntFromObj(interp, objv[1], &status) != TCL_OK) return TCL_ERROR;
    self->exited_ = true;
    self->exitStatus_ = status;
    Tcl_CancelEval(interp, Tcl_ObjPrintf("exit %d", status), nullptr, TCL_CANCEL_UNWIND);
    return TCL_ERROR;
  }

  // `interp`, in this interpreter and in every one made below it: Tcl's own
  // command, except that a new interpreter gets this one's `exit` in place of
  // its own (visible or hidden, as in a safe interpreter) and this `interp`,
  // so that no interpreter a script makes can end the process.
  static int interpCmd_(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    auto* self = static_cast<DefaultTaskManager*>(data);
    const int code = self->interpProc_(self->interpData_, interp, objc, objv);
    int sub = -1;
    if (code != TCL_OK || objc < 2 ||
        Tcl_GetIndexFromObj(nullptr, objv[1], kInterpSubcommands, "subcommand", 0, &sub) != TCL_OK ||
        std::string(kInterpSubcommands[sub]) != "create")
      return code;
    Tcl_Interp* child = Tcl_GetSlave(interp, Tcl_GetString(Tcl_GetObjResult(interp)));
    if (child == nullptr) return code;
    Tcl_Obj* name = Tcl_DuplicateObj(Tcl_GetObjResult(interp));
    Tcl_IncrRefCount(name);
    // A safe interpreter keeps `exit` hidden, where its parent could still
    // invoke it: bring it out so that the alias below replaces it.
    Tcl_ExposeCommand(child, "exit", "exit");
    Tcl_ResetResult(child);
    int result = TCL_OK;
    if (Tcl_CreateAlias(child, "exit", interp, "exit", 0, nullptr) != TCL_OK ||
        Tcl_CreateObjCommand(child, "interp", interpCmd_, self, nullptr) == nullptr) {
      Tcl_DeleteInterp(child);
      Tcl_SetObjResult(interp, Tcl_NewStringObj("cannot make the new interpreter's exit safe", -1));
      result = TCL_ERROR;
    } else {
      Tcl_SetObjResult(interp, name);
    }
    Tcl_DecrRefCount(name);
    return result;
  }

  // `stdout_write newline text`
  static int stdoutWrite_(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    auto* self = static_cast<DefaultTaskManager*>(data);
    int newline = 1;
    if (objc != 3 || Tcl_GetBooleanFromObj(interp, objv[1], &newline) != TCL_OK) {
      Tcl_WrongNumArgs(interp, 1, objv, "newline text");
      return TCL_ERROR;
    }
    int length = 0;
    const char* text = Tcl_GetStringFromObj(objv[2], &length);
    std::cout.write(text, length);
    if (newline) std::cout << '\n';
    std::cout.flush();
    self->keep_(std::string(text, static_cast<std::size_t>(length) < kKeptLineLength
                                      ? static_cast<std::size_t>(length)
                                      : kKeptLineLength));
    return TCL_OK;
  }

  void keep_(std::string line) {
    if (output_.size() == kKeptLines) output_.pop_front();
    output_.push_back(std::move(line));
  }

  std::string lastOutput_() const {
    std::string text;
    for (const std::string& line : output_) text += (text.empty() ? "; its last output: " : " | ") + line;
    return text;
  }

  std::unique_ptr<Tcl_Interp, InterpDeleter> interp_;
  Tcl_ObjCmdProc* interpProc_ = nullptr;
  ClientData interpData_ = nullptr;
  std::thread::id owner_;
  bool exited_ = false;
  int exitStatus_ = 0;
  std::deque<std::string> output_;
};

}  // namespace

task_manager::task_manager() = default;
task_manager::~task_manager() = default;

task_manager& task_manager::instance() {
  if (gInstalled != nullptr) return *gInstalled;
  static DefaultTaskManager defaultManager;
  return defaultManager;
}

void task_manager::setInstance(task_manager* manager) { gInstalled = manager; }

unsigned long task_manager::getTimeLimit() { return gTimeLimitMs.load(); }

void task_manager::setTimeLimit(unsigned long milliseconds) { gTimeLimitMs.store(milliseconds); }

}  // namespace tcltasks
}  // namespace jun
