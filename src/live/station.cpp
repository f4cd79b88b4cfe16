#include "live/station.h"

namespace skypost {

std::optional<station> current_station() {
  if (live_data_stale != 0) return std::nullopt;
  return station{station_settings, live_record, current_moment(), this_board()};
}

}  // namespace skypost
