#pragma once

#include "networks/http_network.h"

namespace skypost {

// Composes for the board that it runs on; the rest is as for every network.
extern const http_network METEONEWS;

// The same for any board. `hardware` is its own address, as 00:1A:2B:3C:4D:5E in letters of either
// case; `platform` its name as in NIMBULOGHW, or nullptr. Asks for no time, environment or file.
void compose_meteonews(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                       const moment& now, const char* hardware, const char* platform);

// Sends the current values once and returns 0, or -1 with the reason in `error_text`.
int upload_meteonews();

}  // namespace skypost
