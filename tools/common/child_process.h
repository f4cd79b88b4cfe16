#pragma once

#include <sys/wait.h>

#include <functional>

namespace skypost {

// A child process, which leads a process group. The group ends with this object or with the parent at the
// latest.
class child_process {
 public:
  // Calls `work` in the child, whose exit status is the result. Throws tool_error if there can be no child.
  explicit child_process(const std::function<int()>& work);
  ~child_process();
  child_process(const child_process&) = delete;
  child_process& operator=(const child_process&) = delete;

  bool has_ended();
  void wait();

  // After its end: the exit status, or -1 if a signal ended it; and the signal, or 0.
  int exit_status() const { return end_.si_code == CLD_EXITED ? end_.si_status : -1; }
  int signal() const { return end_.si_code == CLD_EXITED ? 0 : end_.si_status; }

 private:
  void wait(int options);

  pid_t process_;
  siginfo_t end_{};
};

}  // namespace skypost
