#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace skypost {

// The program `skypost-preview`, which shows what a run would send and sends nothing. Takes its arguments
// without its own name; writes the preview to `out` and what was wrong to `errors`. Returns the exit status:
// 0, 1 when settings or report cannot be read, 2 for a bad command line.
int run_preview_tool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors);

}  // namespace skypost
