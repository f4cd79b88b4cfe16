// The measuring half of scripts/weigh.
//
//   skypost-weigh COMMAND...
//
// runs the program over every network, on a simulated appliance, and prints its peak memory without its children, in
// KiB.

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "sim/world.h"

namespace skypost {
namespace {

[[noreturn]] void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

// Starts the command without output, traced by this process and stopped before the first instruction.
pid_t start_traced(char** command) {
  const pid_t process = fork();
  if (process < 0) fail("fork");
  if (process == 0) {
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, descriptor);
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    execv(command[0], command);
    _exit(127);
  }
  int status = 0;
  if (waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) fail(command[0]);
  return process;
}

long peak_so_far(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string word; status >> word;) {
    long kibibytes = 0;
    if (word == "VmHWM:" && status >> kibibytes) return kibibytes;
  }
  throw std::runtime_error("no VmHWM");
}

long peak_memory_of(char** command) {
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

void weigh(char** command) {
  const sim::world all;
  setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
  setenv("HOME", all.board.root().c_str(), 1);
  std::printf("%ld\n", peak_memory_of(command));
}

}  // namespace
}  // namespace skypost

int main(int count, char** arguments) {
  if (count < 2) {
    std::fputs("usage: skypost-weigh COMMAND...\n", stderr);
    return 2;
  }
  try {
    skypost::weigh(arguments + 1);
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "skypost-weigh: %s\n", fault.what());
    return 1;
  }
}
