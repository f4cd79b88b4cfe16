#pragma once

#include <string>

namespace skypost {

// The text of a report file. Throws tool_error if it cannot be read, is not a regular file, is empty or is longer
// than a report can be.
std::string read_report(const std::string& path);

// The report of the appliance's data server. Unless `quiet`, says on standard error what it is waiting for, if
// that is a terminal. Throws tool_error, without a full stop, if no report arrives.
std::string fetch_report(bool quiet = false);

}  // namespace skypost
