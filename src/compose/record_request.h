#pragma once

#include <span>

#include "compose/command.h"
#include "compose/numbered_record.h"

namespace skypost {

// Appends the command of a GET request with one parameter, `key` (which includes the "="): a record of fields
// separated by semicolons, then `end`.
void append_record_request(text_buffer& command, endpoint server, const char* path, const char* key,
                           std::span<const numbered_field> table, const station& source,
                           const char* end = ";");

}  // namespace skypost
