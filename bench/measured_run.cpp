#include "measured_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "sim/appliance.h"

namespace skypost {
namespace {

[[noreturn]] void fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// Starts a program with its input empty and its output discarded.
pid_t start(words command) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
  pid_t process = 0;
  errno =
      posix_spawn(&process, command[0].c_str(), &actions, nullptr, sim::pointers_to(command).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (errno != 0) fail(command[0]);
  return process;
}

// Like start(), but traced by this process and stopped before the first instruction.
pid_t start_traced(words command) {
  const std::vector<char*> arguments = sim::pointers_to(command);
  const pid_t process = fork();
  if (process < 0) fail("fork");
  if (process == 0) {
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, descriptor);
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    execv(arguments[0], arguments.data());
    _exit(127);
  }
  int status = 0;
  if (waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) fail(command[0]);
  return process;
}

double microseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

// Peak memory of a process so far, KiB.
long peak_so_far(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string word; status >> word;) {
    long kibibytes = 0;
    if (word == "VmHWM:" && status >> kibibytes) return kibibytes;
  }
  throw std::runtime_error("no VmHWM");
}

}  // namespace

long peak_memory_of(const words& command) {
  const pid_t process = start_traced(command);
  if (ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACEEXIT) != 0)
    fail("ptrace");
  ptrace(PTRACE_CONT, process, nullptr, nullptr);

  long peak = 0;
  int status = 0;
  while (waitpid(process, &status, 0) == process && WIFSTOPPED(status)) {
    const int event = status >> 16;
    // Read just before the exit: afterwards the kernel's figure includes wget.
    if (event == PTRACE_EVENT_EXIT) peak = peak_so_far(process);
    // SIGTRAP only reports the exec; all other signals are for the program.
    const int signal = WSTOPSIG(status);
    ptrace(PTRACE_CONT, process, nullptr, event != 0 || signal == SIGTRAP ? 0 : signal);
  }
  return peak;
}

cpu_time cpu_time_of(const words& command) {
  const pid_t process = start(command);
  // The clock of a process can be read until the process is reaped.
  siginfo_t ended{};
  clockid_t clock{};
  timespec own{};
  if (waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOWAIT) != 0 ||
      clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &own) != 0)
    fail(command[0]);
  rusage usage{};
  if (wait4(process, nullptr, 0, &usage) != process) fail(command[0]);
  return {static_cast<double>(own.tv_sec) * 1e6 + static_cast<double>(own.tv_nsec) / 1e3,
          microseconds(usage.ru_utime) + microseconds(usage.ru_stime)};
}

}  // namespace skypost
