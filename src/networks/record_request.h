#pragma once

#include <span>

#include "live/numbered_record.h"
#include "transport/command.h"

namespace skypost {

// Appends the whole command of a GET request whose one parameter `key`, which ends in "=", is a record with
// a semicolon behind each field.
void append_record_request(text_buffer& command, endpoint server, const char* path, const char* key,
                           std::span<const numbered_field> table, const settings_record& settings,
                           const LiveRecord& live, const moment& now);

}  // namespace skypost
