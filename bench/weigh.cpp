// What scripts/weigh judges and no shell can measure. Prints the peak memory of a run over every network
// in KiB, then the CPU time of a bad argument in microseconds, then that of a program that only returns.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

#include "sim/world.h"

namespace skypost {
namespace {

// Starts a program that nobody listens to, with at most one argument.
pid_t start(const char* program, const char* argument = nullptr) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
  char* words[] = {const_cast<char*>(program), const_cast<char*>(argument), nullptr};
  pid_t process = 0;
  const int fault = posix_spawn(&process, program, &actions, nullptr, words, environ);
  posix_spawn_file_actions_destroy(&actions);
  if (fault != 0) throw std::system_error(fault, std::generic_category(), program);
  return process;
}

// The most memory that a process has had so far; 0 once it has ended.
long peak_so_far(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string word; status >> word;) {
    long kibibytes = 0;
    if (word == "VmHWM:" && status >> kibibytes) return kibibytes;
  }
  return 0;
}

// Asked for while it runs: what the kernel tells about an ended process counts its wget as well.
long peak_of_full_run(const char* program) {
  const sim::world all;
  setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
  setenv("HOME", all.board.root().c_str(), 1);
  const pid_t process = start(program);
  long peak = 0;
  while (waitpid(process, nullptr, WNOHANG) == 0) {
    peak = std::max(peak, peak_so_far(process));
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return peak;
}

double microseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

double cpu_time(const char* program) {
  rusage usage{};
  const pid_t process = start(program, "-x");
  if (wait4(process, nullptr, 0, &usage) != process)
    throw std::system_error(errno, std::generic_category(), program);
  return microseconds(usage.ru_utime) + microseconds(usage.ru_stime);
}

void print_figures(const char* program, const char* returning_program) {
  std::printf("%ld\n", peak_of_full_run(program));

  constexpr int ROUNDS = 1'000;
  double time = 0;
  double returning_time = 0;
  for (int i = 0; i < ROUNDS; ++i) {
    time += cpu_time(program);
    returning_time += cpu_time(returning_program);
  }
  std::printf("%.0f\n%.0f\n", time / ROUNDS, returning_time / ROUNDS);
}

}  // namespace
}  // namespace skypost

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: skypost-weigh PROGRAM PROGRAM-THAT-ONLY-RETURNS\n", stderr);
    return 2;
  }
  try {
    skypost::print_figures(arguments[1], arguments[2]);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "skypost-weigh: %s\n", fault.what());
    return 1;
  }
}
