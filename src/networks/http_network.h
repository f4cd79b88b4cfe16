#pragma once

#include "base/moment.h"
#include "base/text.h"
#include "live/live_record.h"
#include "settings/record.h"
#include "transport/upload.h"

namespace skypost {

// A network that takes one HTTP request: its request and the judgement of its reply.
struct http_network {
  // Appends the whole command to an empty text. Asks for no time, environment or file; MeteoNews alone
  // looks up which board it runs on.
  void (*compose)(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                  const moment& now);
  upload_spec reply;
};

// What every HTTP network does: nothing while the live data are stale, else one command, composed for
// this moment, run and judged. Returns 0, or -1 with the reason in `error_text`.
int upload_to(const http_network& network);

}  // namespace skypost
