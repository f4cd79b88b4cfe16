#pragma once

#include <string_view>

#include "base/shell.h"
#include "endpoints/endpoints.h"

namespace skypost {

inline constexpr char WGET_COMMAND[] = "/usr/bin/wget -U nimbulog";
inline constexpr int WGET_TRIES = 4;

// Appends the server's URL. `path` is the network's default; a path in the endpoint file replaces it.
void append_url(text_buffer& command, endpoint server, const char* path);

// Begins a GET command, up to the "?" before the query.
void begin_get(text_buffer& command, endpoint server, const char* path);

// Begins a POST command; the caller appends its other options and the URL.
void begin_post(text_buffer& command);

// Appends a text from the settings or the report as a value in a query or a form. `&` and `#`, which would end the
// value, are percent-encoded; wget encodes other characters that are not allowed in URLs. `+` and `%` are left alone, so the network reads
// them as a space and an escape.
void append_url_value(text_buffer& command, std::string_view value);

// Appends `key` (including its "=") and the encoded value.
void append_parameter(text_buffer& command, const char* key, std::string_view value);

}  // namespace skypost
