#pragma once

#include <netinet/in.h>

#include <cstdint>
#include <span>

#include "compose/upload.h"
#include "endpoints/endpoints.h"

// The channels that are neither HTTP nor files: APRS and mail.
//
// Each upload function sends the current values and returns 0, or -1 with the reason in `error_text`. While the live data
// are stale it sends nothing and returns 0.
namespace skypost {

// CWOP and APRS send the login line and the packet, each followed by CR LF. The packet is a complete weather report with position and time
// stamp, as in the APRS Protocol Reference 1.0.1.
extern const upload CWOP;
extern const upload APRS;

// TCP port of the CWOP servers. The APRS server's port is a setting.
inline constexpr std::uint32_t CWOP_PORT = 14'580;

// The endpoints that each needs. While one of them is refused, nothing is sent.
inline constexpr endpoint CWOP_ENDPOINTS[] = {endpoint::cwop_first, endpoint::cwop_second,
                                              endpoint::aprs_software, endpoint::aprs_connect_seconds};
inline constexpr endpoint APRS_ENDPOINTS[] = {endpoint::aprs_software, endpoint::aprs_path,
                                              endpoint::aprs_connect_seconds};

// The mail consists of header and body.
extern const upload BORGERVEJR;

// The endpoints that the mail needs; mail_sender only if the settings give no sender.
std::span<const endpoint> mail_endpoints(const settings_record& settings);

int upload_cwop();
int upload_aprs();
int send_mail_report();  // 0 once the mail program has started, even if it fails

// Sends to the first of `servers` (host names, ended by nullptr) that replies with the call sign, with up to five attempts
// at each. Returns 0 with error_text empty, or -1 with a message in error_text for each failed attempt, as far as they
// fit. A call sign with a line break is refused.
int aprs_session(const char* const* servers, std::uint32_t port, const char* call_sign, std::int32_t passcode,
                 bool cwop);

// The pauses of a session, in milliseconds. Only tests change them.
struct aprs_pause_lengths {
  unsigned before_attempt = 2'000;
  unsigned before_reading = 5'000;  // long enough for one read to get greeting and reply
};
extern aprs_pause_lengths aprs_pauses;

// Sets `address` to the first IPv4 address of `host`, with the port. Returns 0, or -1 with the reason in h_errno.
int resolve_host(sockaddr_in& address, const char* host, std::uint32_t port);

// Replaces each line feed by a comma and returns `text`.
text_buffer& newlines_to_commas(text_buffer& text);

// Appends the command that takes the mail on standard input and logs what the mail program prints.
void append_mail_command(text_buffer& command);

}  // namespace skypost
