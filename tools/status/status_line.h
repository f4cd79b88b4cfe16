#pragma once

#include <string_view>

#include "status/record.h"

// A line of a status page or of the history; skypost-status(8) describes its columns. Nothing in it is trusted.
namespace skypost {

// Reads a line without its line feed; missing columns are empty. Returns false if a column is invalid or the name unknown.
// Otherwise sets `record`, and `place`, its index.
bool read_line(std::string_view line, std::size_t& place, status_record& record);

// Appends the line of the history that reads as `record`.
void append_line(text_buffer& text, std::size_t place, const status_record& record);

}  // namespace skypost
