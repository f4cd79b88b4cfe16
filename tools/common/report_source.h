#pragma once

#include <string>

namespace skypost {

// The text of a report file. Throws tool_error when it cannot be read, is no regular file, is empty or is longer
// than a report can be.
std::string read_report(const std::string& path);

// The report of the appliance's data server. Unless it is to be quiet, it says on standard error, when that
// is a terminal, what it waits for. Throws tool_error when no report comes, with a sentence that has no full stop.
std::string fetch_report(bool quiet = false);

}  // namespace skypost
