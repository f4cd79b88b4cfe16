#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace skypost {

// The program `skypost-settings`, which makes, shows, changes and checks settings files. Takes its arguments
// without its own name; writes what was asked for to `out` and what was wrong to `errors`. Returns the exit
// status: 0, 1 when it failed (no file was changed) or a check found something, 2 for a bad command line.
int run_settings_tool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors);

}  // namespace skypost
