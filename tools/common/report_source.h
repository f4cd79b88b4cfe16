#pragma once

#include <string>

namespace skypost {

// Reads a report from a file. Throws tool_error if the file cannot be read, is not a regular file, is empty or is
// longer than a report can be.
std::string read_report(const std::string& path);

// Fetches the report from the appliance's data server. Unless `quiet`, prints what it is waiting for if standard error
// is a terminal. Throws tool_error, whose text has no full stop, if no report arrives.
std::string fetch_report(bool quiet = false);

}  // namespace skypost
