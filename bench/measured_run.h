#pragma once

#include <string>
#include <vector>

// Each function runs a program to its end, discards its output, and throws if it cannot be run.
namespace skypost {

// A program's full path, then its arguments.
using words = std::vector<std::string>;

// Peak memory of the program without its children, KiB.
long peak_memory_of(const words& command);

// Processor time, microseconds.
struct cpu_time {
  double own = 0;
  double with_children = 0;
};
cpu_time cpu_time_of(const words& command);

}  // namespace skypost
