#pragma once

#include <iosfwd>

#include "common/arguments.h"

namespace skypost {

// A program for the station's owner.
struct tool {
  const char* name;
  void (*print_help)(std::ostream& out);
  // Takes the arguments without the program's name, writes what was asked for to `out` and returns the exit
  // status. Throws tool_error when it cannot do it.
  int (*run)(const words& arguments, std::ostream& out);
};

// Runs a tool; --help and --version come before everything else. Writes to `errors` what was wrong. Returns
// the exit status.
int run_tool(const tool& program, words arguments, std::ostream& out, std::ostream& errors);

// The same with the arguments of `main`, on the standard streams.
int run_tool(const tool& program, int argument_count, char** arguments);

}  // namespace skypost
