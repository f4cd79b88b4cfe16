#pragma once

#include <cstdio>
#include <span>
#include <string_view>

#include "base/text.h"

namespace skypost {

// The rows of the endpoint file: servers, mail addresses, and what APRS servers are told.
enum class endpoint {
#define ENDPOINT(name, kind, value) name,
#include "base/endpoints.def"
  COUNT
};

inline constexpr std::size_t ENDPOINT_CAPACITY = 127;
inline constexpr std::size_t SUCCESS_TEXT_CAPACITY = 60;

// The value in effect: "scheme://host[:port][/path]", "host[:port]", a host name, a mail address, a software name or
// an APRS path, depending on the row. It contains no character that is special to the shell, and none that ends a URL
// or a line. If the row is refused, it is a name that never resolves.
const char* endpoint_value(endpoint row);

// Appends the server's URL. If the endpoint file gives it no path, `path`, the network's own, follows.
void append_url(text_buffer& command, endpoint server, const char* path);

// The text that marks a good reply of this server, in addition to the network's own test; empty if there is none.
std::string_view endpoint_success_text(endpoint row);

// True if the endpoint file has an invalid value for the row, or cannot be read. The default must not be used then:
// the owner may want another server, or an encrypted one.
bool is_refused(endpoint row);

// Returns 0, or -1 with the reason in `error_text` if one of the rows is refused.
int require_endpoints(std::span<const endpoint> rows);

// The row's name in the endpoint file.
const char* endpoint_name(endpoint row);

// Resets every row to its default.
void reset_endpoints();

// Reads `name = value` lines; `#` starts a comment, and of several lines with one name the last counts. An invalid line
// that begins with a known name refuses its row; any other is skipped. A file that cannot be read to its end refuses
// every row. Each error and its consequence go to `errors`, one line each, after the file's `path`.
void read_endpoints(std::FILE* file, const char* path, std::FILE* errors = stderr);

// Loads the endpoint file on top of the defaults. Most appliances have none. One that exists and cannot be opened
// refuses every row.
void load_endpoints(std::FILE* errors = stderr);

}  // namespace skypost
