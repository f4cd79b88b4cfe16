#pragma once

#include <iosfwd>

#include "common/arguments.h"

// The commands of `skypost-settings`. Each takes the words after its name, writes what was asked for to `out`
// and returns the exit status. Each throws usage_error for words that it does not take, and tool_error when it
// cannot do what they say.
namespace skypost {

int run_new(const words& arguments, std::ostream& out);
int run_show(const words& arguments, std::ostream& out);
int run_names(const words& arguments, std::ostream& out);
int run_set(const words& arguments, std::ostream& out);
int run_sensors(const words& arguments, std::ostream& out);
int run_check(const words& arguments, std::ostream& out);

}  // namespace skypost
