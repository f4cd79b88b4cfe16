#pragma once

#include <optional>

#include "base/moment.h"
#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

// The board that the program runs on.
struct board {
  const char* platform;          // as in NIMBULOGHW; nullptr when unknown
  const char* hardware_address;  // of eth0, as 00:1A:2B:3C:4D:5E; empty when unknown
};

// All that a text is composed from.
struct station {
  const settings_record& settings;
  const LiveRecord& live;
  moment now;
  board host;
};

// The station of this process at this moment; nothing while its live data must not be sent.
std::optional<station> current_station();

}  // namespace skypost
