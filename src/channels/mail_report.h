#pragma once

#include "base/moment.h"
#include "base/text.h"
#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

// Appends the header block and the empty line that ends it, in line feeds. The sender is the
// appliance's own where the settings name none; of one with a line break, only what stands in front of
// it counts.
void compose_mail_header(text_buffer& header, const settings_record& settings, const moment& now);

// Appends the local time and a line for each known value: %, °C, hPa, W/m², degrees, whole m/s, mm. Lines
// end in carriage return and line feed.
void compose_mail_body(text_buffer& body, const LiveRecord& live, const moment& now);

// Appends the command that takes the mail on its standard input and logs what the mail program says.
void compose_mail_command(text_buffer& command);

// Hands the current values to the mail program. Returns 0, also when the live data are stale and whatever
// becomes of the mail; -1 when the command could not be started, the reason then in `error_text`.
int send_mail_report();

}  // namespace skypost
