#pragma once

#include <cstdio>

#include "base/text.h"

namespace skypost {

// The servers and the fixed mail addresses, from the list in endpoints.def.
enum class endpoint {
#define ENDPOINT(name, kind, value) name,
#include "base/endpoints.def"
  COUNT
};

inline constexpr std::size_t ENDPOINT_CAPACITY = 127;

// The value in effect: "scheme://host[:port]", "host[:port]", a host name or a mail address, depending on the
// row. It contains no character that is special to the shell or in a URL.
const char* endpoint_value(endpoint row);

// The row's name in the endpoint file.
const char* endpoint_name(endpoint row);

// Resets every row to its default.
void reset_endpoints();

// Reads `name = value` lines; `#` starts a comment. An invalid line is skipped; its number and the reason go
// to `errors`, one line each, after the file's `path`.
void read_endpoints(std::FILE* file, const char* path, std::FILE* errors = stderr);

// Loads the endpoint file on top of the defaults. Most appliances have none. A file that cannot be read is
// reported to `errors`.
void load_endpoints(std::FILE* errors = stderr);

}  // namespace skypost
