#include "common/child_process.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>

#include "common/errors.h"

namespace skypost {
namespace {

void end_group(int) { kill(0, SIGKILL); }

// An exception must not leave the child, which would then go on as a second parent. Of a parent that is interrupted, the
// terminal tells the child nothing: it is in another group.
[[noreturn]] void be_child(const std::function<int()>& work) noexcept {
  setpgid(0, 0);
  std::signal(SIGTERM, end_group);
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  _exit(work());
}

}  // namespace

child_process::child_process(const std::function<int()>& work) : process_(fork()) {
  if (process_ < 0) throw tool_error(std::string("no child process: ") + std::strerror(errno));
  if (process_ == 0) be_child(work);
  setpgid(process_, process_);  // here too, so that the group exists whichever of the two comes first
}

// The child is reaped last: until then, its number names no other group.
child_process::~child_process() {
  kill(-process_, SIGKILL);
  wait();
  waitpid(process_, nullptr, 0);
}

bool child_process::has_ended() {
  wait(WNOHANG);
  return end_.si_pid != 0;
}

void child_process::wait() { wait(0); }

void child_process::wait(int options) {
  while (end_.si_pid == 0 &&
         waitid(P_PID, static_cast<id_t>(process_), &end_, WEXITED | WNOWAIT | options) != 0 &&
         errno == EINTR) {
  }
}

}  // namespace skypost
