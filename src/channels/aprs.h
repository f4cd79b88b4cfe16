#pragma once

#include <netinet/in.h>

#include <cstdint>

#include "base/moment.h"
#include "base/text.h"
#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

// How long a session pauses, in milliseconds. Only a test writes here, before the session.
struct aprs_pause_lengths {
  unsigned before_attempt = 2'000;
  unsigned before_reading = 5'000;  // the server's greeting and its answer are read at once
};
extern aprs_pause_lengths aprs_pauses;

// Login line and weather packet.
using aprs_text = fixed_text<9'999>;

// Appends the login line and the weather packet, each with its line end: position, wind, °F, hundredths
// of an inch, tenths of hPa; for CWOP also W/m². Asks for no time, environment or file.
void compose_aprs_text(text_buffer& text, const settings_record& settings, const LiveRecord& live,
                       const moment& now, const char* call_sign, std::int32_t passcode, bool cwop);

// Fills `address` with the first IPv4 address of `host` and the port. Returns 0, or -1 when the name
// has none.
int resolve_host(sockaddr_in& address, const char* host, std::uint32_t port);

// Replaces every line feed by a comma and returns the same text.
text_buffer& newlines_to_commas(text_buffer& text);

// Sends the current values to the first of `servers` (host names, nullptr behind the last) that answers
// with the call sign: five attempts at each, with pauses. Returns 0 then or when the live data are
// stale, with `error_text` empty; -1 with one message for each failed attempt in it otherwise, cut at
// its end. A call sign that holds a line break is not sent.
int aprs_session(const char* const* servers, std::uint32_t port, const char* call_sign, std::int32_t passcode,
                 bool cwop);

// The sessions that the settings ask for: with the two CWOP servers, with the APRS server.
int upload_cwop();
int upload_aprs();

}  // namespace skypost
