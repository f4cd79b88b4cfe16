#pragma once

#include <optional>

#include "base/board.h"
#include "base/moment.h"
#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

// Everything that a text is composed from.
struct station {
  const settings_record& settings;
  const LiveRecord& live;
  moment now;
  board host;
};

// The current station; nothing while its data must not be sent.
std::optional<station> current_station();

}  // namespace skypost
