#pragma once

#include <optional>

#include "base/board.h"
#include "base/moment.h"
#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

// Everything that composers read.
struct station {
  const settings_record& settings;
  const LiveRecord& live;
  moment now;
  board host;
};

// Returns the current station, or nothing while its live record must not be sent.
std::optional<station> current_station();

}  // namespace skypost
