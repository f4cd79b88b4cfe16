#pragma once

#include <cstdint>

#include "compose/station.h"
#include "transport/command.h"

namespace skypost {

enum class carrier : std::uint8_t { http, file, aprs, mail };

// A file, a packet and a mail have the room of a command.
using outgoing_text = command_text;

// Appends the whole of what is handed out to an empty text, from the station and the endpoints alone: it asks
// for no time, environment or file, so the same station always makes the same text.
using composer = void (*)(text_buffer& text, const station& from);

// What one step of a run hands out, and how.
struct outgoing {
  const char* id;  // one word of small letters, digits and "_"; no two have the same
  carrier by;      // http: what is composed is the command that sends the request
  composer compose;
};

}  // namespace skypost
