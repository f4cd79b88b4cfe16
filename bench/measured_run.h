#pragma once

#include <string>
#include <vector>

// Each runs a program to its end with its output discarded, and throws if it cannot be run.
namespace skypost {

// A program's full path, then its arguments.
using words = std::vector<std::string>;

struct traced_run {
  long peak = 0;      // of the program's own memory, KiB
  int processes = 1;  // the program and all its descendants
};
traced_run trace(const words& command);

// Processor time, microseconds.
struct cpu_time {
  double own = 0;
  double with_children = 0;
};
cpu_time cpu_time_of(const words& command);

// Instructions of the program alone, as counted by valgrind, which writes to the file `log`.
long long instructions_of(const std::string& log, const words& command);

}  // namespace skypost
