#pragma once

#include <cstdio>

namespace skypost {

// Reads `name = value` lines; `#` starts a comment, and the last of several lines with one name counts. An invalid line
// that starts with a known name refuses that endpoint; any other is skipped. A file that cannot be read to its end refuses
// every endpoint. Prints each error and its consequence to `errors`, one line each, after the file's `path`.
void read_endpoints(std::FILE* file, const char* path, std::FILE* errors = stderr);

// Loads the endpoint file on top of the built-in values. Most appliances have none. If it exists but cannot be opened,
// every endpoint is refused.
void load_endpoints(std::FILE* errors = stderr);

}  // namespace skypost
