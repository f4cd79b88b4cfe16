#pragma once

#include <cstdint>
#include <span>

#include "base/value.h"
#include "live/live_record.h"

namespace skypost {

// One parameter of a request or one line of a text: a key and a live value, left out while the value is
// missing.
struct live_parameter {
  const char* key;
  std::int32_t LiveRecord::*value;
  const value_form& form;
  const char* end = "";  // goes with the value
};

// Appends the known ones, in their order.
inline void append_known(text_buffer& text, const LiveRecord& live,
                         std::span<const live_parameter> parameters) {
  for (const live_parameter& row : parameters)
    append_known(text, row.key, live.*row.value, row.form, row.end);
}

}  // namespace skypost
