#pragma once

#include <string_view>

#include "base/endpoints.h"
#include "base/shell.h"
#include "base/text.h"

namespace skypost {

inline constexpr char WGET_COMMAND[] = "/usr/bin/wget -U nimbulog";
inline constexpr int WGET_TRIES = 4;

// Appends the server's URL. If the endpoint file gives it no path, `path`, the network's own, follows.
void append_url(text_buffer& command, endpoint server, const char* path);

// Begins the command of a GET request, up to and including the "?" after `path`, which is the network's own: a path in
// the endpoint file replaces it.
void begin_get(text_buffer& command, endpoint server, const char* path);

// Ends it. wget's standard error becomes part of the reply.
void end_get(text_buffer& command);

// Begins the command of a POST request, up to its first option. Without -q, wget's messages are part of the
// reply.
void begin_post(text_buffer& command);

// Appends a text from the settings or the report as a value in a query or a form. `&` and `#`, which would
// end the value, are percent-encoded; wget encodes what else a URL cannot hold. `+` and `%` stay, so the
// network reads a blank and an escape.
void append_url_value(text_buffer& command, std::string_view value);

// Appends a parameter: `key`, which includes the "=", and such a value.
void append_parameter(text_buffer& command, const char* key, std::string_view value);

}  // namespace skypost
