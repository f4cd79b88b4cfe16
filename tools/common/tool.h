#pragma once

#include <iosfwd>

#include "common/arguments.h"

namespace skypost {

// A program for the station's owner.
struct tool {
  const char* name;
  void (*print_help)(std::ostream& out);
  // Takes the arguments without the program's name, writes to `out` and returns the exit status. Throws
  // tool_error on failure.
  int (*run)(const words& arguments, std::ostream& out);
};

// Runs a tool. --help and --version take precedence. Prints errors to `errors`. Returns the exit status.
int run_tool(const tool& program, words arguments, std::ostream& out, std::ostream& errors);

// Runs a tool with the arguments of main() and the standard streams.
int run_tool(const tool& program, int argument_count, char** arguments);

}  // namespace skypost
