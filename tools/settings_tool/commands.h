#pragma once

#include <iosfwd>

#include "common/arguments.h"

// The commands of `skypost-settings`. Each takes the arguments after its name, writes to `out` and returns the exit
// status. Throws usage_error for bad arguments, tool_error on failure.
namespace skypost {

int run_new(const words& arguments, std::ostream& out);
int run_show(const words& arguments, std::ostream& out);
int run_names(const words& arguments, std::ostream& out);
int run_set(const words& arguments, std::ostream& out);
int run_sensors(const words& arguments, std::ostream& out);
int run_check(const words& arguments, std::ostream& out);
int run_try(const words& arguments, std::ostream& out);

}  // namespace skypost
