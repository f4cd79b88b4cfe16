#pragma once

#include <cstdint>

#include "base/shell.h"
#include "live/station.h"

namespace skypost {

enum class carrier : std::uint8_t { http, file, aprs, mail };

// Files, packets and mails share a command's capacity.
using upload_text = command_text;

// Appends a text, or a part of one. Depends only on the station and the endpoints, never on the clock, the environment
// or files.
using composer = void (*)(text_buffer& text, const station& source);

// What one step sends, and how. http_network and pull_file build on it.
struct upload {
  const char* id;                         // unique; lower-case letters, digits and "_"
  carrier by;                             // for http, `compose` writes the wget command
  composer compose;                       // writes the complete text into an empty buffer
  int (*send)();                          // returns 0, or -1 with the reason in `error_text`
  const upload* rapid_variant = nullptr;  // what `send` sends instead in rapid fire, if that differs
};

}  // namespace skypost
