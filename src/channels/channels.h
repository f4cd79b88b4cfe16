#pragma once

#include <netinet/in.h>

#include <cstdint>

#include "compose/outgoing.h"

// The two ways to a network that are neither HTTP nor a file: an APRS session and a mail.
namespace skypost {

// The login line and the weather packet, each with its line end: a complete weather report with position and
// time stamp, as the APRS Protocol Reference 1.0.1 has it.
extern const outgoing CWOP;
extern const outgoing APRS;

// The TCP port of the CWOP servers; that of the APRS server is a setting.
inline constexpr std::uint32_t CWOP_PORT = 14'580;

// The mail, header and body.
extern const outgoing BORGERVEJR;

// Each sends the current values and returns 0, or -1 with the reason in `error_text`. While the live data
// are stale it sends nothing and returns 0.
int upload_cwop();
int upload_aprs();
int send_mail_report();  // 0 as soon as the mail program has started, whatever becomes of the mail

// Both APRS sessions: sends the current values to the first of `servers` (host names, ended by nullptr) that
// answers with the call sign: five attempts at each, with pauses. It returns as they do, with `error_text`
// empty at 0; otherwise -1 with one message for each failed attempt in it, cut where it is full. A
// call sign with a line break in it is not sent.
int aprs_session(const char* const* servers, std::uint32_t port, const char* call_sign, std::int32_t passcode,
                 bool cwop);

// How long a session pauses, in milliseconds. Only a test writes here, before the session.
struct aprs_pause_lengths {
  unsigned before_attempt = 2'000;
  unsigned before_reading = 5'000;  // the server's greeting and its answer are read at once
};
extern aprs_pause_lengths aprs_pauses;

// Fills `address` with the first IPv4 address of `host`, and the port. Returns 0, or -1 with the reason in
// h_errno.
int resolve_host(sockaddr_in& address, const char* host, std::uint32_t port);

// Replaces every line feed by a comma and returns the same text.
text_buffer& newlines_to_commas(text_buffer& text);

// Appends the command that takes the mail on its standard input and logs what the mail program says.
void append_mail_command(text_buffer& command);

}  // namespace skypost
