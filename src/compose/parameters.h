#pragma once

#include <span>

#include "compose/value.h"

namespace skypost {

// One parameter of a request, or one line of a file: a key and a number of the live record. It is left out if the number
// is missing.
struct parameter {
  const char* key;
  live_number value;
  const value_format& format;
  const char* end = "";     // appended after the value
  live_number only_with{};  // if set, the parameter is left out if this number is missing instead
};

inline void append_known(text_buffer& text, const LiveRecord& live, const parameter& row) {
  const live_number& deciding = row.only_with.is_none() ? row.value : row.only_with;
  if (!known(deciding.of(live))) return;
  text.append_text(row.key);
  append_value(text, row.value.of(live), row.format);
  text.append_text(row.end);
}

// Appends all known parameters, in order.
inline void append_known(text_buffer& text, const LiveRecord& live, std::span<const parameter> rows) {
  for (const parameter& row : rows) append_known(text, live, row);
}

}  // namespace skypost
