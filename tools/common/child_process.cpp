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

// noexcept, because an exception would let the child carry on as a second parent. Ctrl-C does not reach the child's
// process group, so the child gets SIGTERM when the parent dies.
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
  setpgid(process_, process_);  // in both processes, because either may run first
}

// Reaps the child last, because its process ID could be reused afterwards.
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
