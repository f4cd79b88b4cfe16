#pragma once

#include <string>
#include <vector>

// Each runs a program to its end, nobody listening to it. What cannot be run throws.
namespace skypost {

// A program's full path, then its arguments.
using words = std::vector<std::string>;

struct traced_run {
  long peak = 0;      // the most memory that the program itself had, KiB
  int processes = 1;  // the program and all that it started, directly or not
};
traced_run trace(const words& command);

// Processor time, microseconds.
struct cpu_time {
  double own = 0;
  double with_children = 0;
};
cpu_time cpu_time_of(const words& command);

// What the program itself executes, as valgrind counts it; `log` is a file for valgrind.
long long instructions_of(const std::string& log, const words& command);

}  // namespace skypost
