#pragma once

#include <cstdio>

namespace skypost {

// Reads `name = value` lines; `#` starts a comment, and of several lines with one name the last counts. An invalid line
// that begins with a known name refuses its row; any other is skipped. A file that cannot be read to its end refuses
// every row. Each error and its consequence go to `errors`, one line each, after the file's `path`.
void read_endpoints(std::FILE* file, const char* path, std::FILE* errors = stderr);

// Loads the endpoint file on top of the defaults. Most appliances have none. One that exists and cannot be opened
// refuses every row.
void load_endpoints(std::FILE* errors = stderr);

}  // namespace skypost
