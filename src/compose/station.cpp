#include "compose/station.h"

#include <cstdlib>

#include "base/process_state.h"

namespace skypost {

std::optional<station> current_station() {
  if (flags.live_data_stale != 0) return std::nullopt;
  const board host = {std::getenv("NIMBULOGHW"), hardware_address.c_str()};
  return station{station_settings, live_record, current_moment(), host};
}

}  // namespace skypost
