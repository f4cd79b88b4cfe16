#pragma once

#include <sys/wait.h>

#include <functional>

namespace skypost {

// A child process that leads a process group. The group is killed when this object is destroyed or the parent dies.
class child_process {
 public:
  // Calls `work` in the child, which exits with its result. Throws tool_error if fork() fails.
  explicit child_process(const std::function<int()>& work);
  ~child_process();
  child_process(const child_process&) = delete;
  child_process& operator=(const child_process&) = delete;

  bool has_ended();
  void wait();

  // Call these only when the child has ended. exit_status() is -1 if a signal ended it; signal() is 0 if none did.
  int exit_status() const { return end_.si_code == CLD_EXITED ? end_.si_status : -1; }
  int signal() const { return end_.si_code == CLD_EXITED ? 0 : end_.si_status; }

 private:
  void wait(int options);

  pid_t process_;
  siginfo_t end_{};
};

}  // namespace skypost
