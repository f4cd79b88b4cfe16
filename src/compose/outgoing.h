#pragma once

#include <cstdint>

#include "live/station.h"
#include "transport/upload.h"

namespace skypost {

enum class carrier : std::uint8_t { http, file, aprs, mail };

// Files, packets and mails share a command's capacity.
using outgoing_text = command_text;

// Writes the complete text into an empty buffer. Depends on the station and the endpoints alone, never on
// clock, environment or files.
using composer = void (*)(text_buffer& text, const station& source);

// An upload: what one step sends, and how.
struct outgoing {
  const char* id;      // unique; lower-case letters, digits and "_"
  carrier carried_by;  // for http, `compose` writes the wget command
  composer compose;
  int (*send)();                            // returns 0, or -1 with the reason in `error_text`
  const outgoing* rapid_variant = nullptr;  // what `send` sends instead in rapid fire, if that differs
};

}  // namespace skypost
