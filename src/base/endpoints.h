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

// The value in effect: "scheme://host[:port]", "host[:port]", a host name or a mail address, depending on
// the row. It holds no character that means something to the shell or in a URL.
const char* endpoint_value(endpoint row);

// The name of the row in the override file.
const char* endpoint_name(endpoint row);

// Returns every row to its default.
void reset_endpoints();

// Reads rows `name = value`, one a line; `#` begins a comment. A line that is not such a row is skipped. Its
// number and its fault are written to `errors`, one a line, under the file's `path`.
void read_endpoints(std::FILE* file, const char* path, std::FILE* errors = stderr);

// Reads the appliance's override file on top of the defaults. Most appliances have none.
void load_endpoints(std::FILE* errors = stderr);

}  // namespace skypost
