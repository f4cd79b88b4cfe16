#pragma once

#include <string_view>

#include "base/endpoints.h"
#include "base/shell.h"
#include "base/text.h"

namespace skypost {

inline constexpr char WGET_COMMAND[] = "/usr/bin/wget -U nimbulog";
inline constexpr int WGET_TRIES = 4;

inline constexpr std::size_t COMMAND_CAPACITY = 9'999;
using command_text = fixed_text<COMMAND_CAPACITY>;

// Begins the command of a GET request: up to and with the "?" behind the endpoint's `path`.
void begin_get(text_buffer& command, endpoint server, const char* path);

// Ends it, with what wget writes to its standard error joined to the reply.
void end_get(text_buffer& command);

// Begins the command of a POST request, which reports wget's own lines too: up to its first option.
void begin_post(text_buffer& command);

// Appends a text from the settings or the report as a value of a query or a form. `&` and `#`, which
// would end the value, are percent-encoded; wget encodes what else may not stand in a URL.
void append_url_value(text_buffer& command, std::string_view value);

// Appends a parameter: `key`, which ends in "=", and such a value.
void append_parameter(text_buffer& command, const char* key, std::string_view value);

}  // namespace skypost
